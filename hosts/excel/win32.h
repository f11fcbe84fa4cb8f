#pragma once

// The one door to the system's headers, which depend on one another's order; it undoes the macro that hides a
// member of the platform's interfaces.
// clang-format off
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <ocidl.h>
#include <olectl.h>
#include <commctrl.h>
#include <richedit.h>
#include <shlobj.h>
#include <wininet.h>
// clang-format on

#undef Yield  // an empty macro left over from 16-bit Windows
