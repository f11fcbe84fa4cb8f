#pragma once

#include "hosts/excel/win32.h"

namespace quorvel {

// A function of user32 that came with Windows 10; null where it is missing.
template <class Function>
Function* Windows10(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

}  // namespace quorvel
