#pragma once

#include "hosts/excel/win32.h"
#include "platform/text.h"

namespace quorvel {

inline constexpr char kVersion[] = QUORVEL_VERSION;

inline constexpr CLSID kConnectClass = {
    0xED9E9C49, 0x5CC1, 0x44FD, {0x99, 0x50, 0xDE, 0xEC, 0xA3, 0x17, 0x32, 0xF8}};
inline constexpr TextView kProgramId = u"Quorvel.Connect";

// Registers the class `Connect`, served by the DLL at `path`, and the add-in with Excel, for the current user
// and in the registry view of this DLL's bitness. Replaces what an earlier registration wrote. Returns a
// result code; after a failure nothing is registered.
[[nodiscard]] HRESULT Register(const Text& path);
// Removes all that Register writes; what is missing is no error.
[[nodiscard]] HRESULT Unregister();

}  // namespace quorvel
