#pragma once

#include <cstdint>
#include <optional>

#include "hosts/excel/win32.h"
#include "platform/text.h"

namespace quorvel {

// Single values of the registry, in the view of this DLL's own bitness. The functions that write create the
// key as needed and return a system error code.

// Nothing when the value is missing or no text. An empty `name` is the key's default value.
[[nodiscard]] std::optional<Text> ReadRegistryText(HKEY root, const Text& key, const Text& name);
[[nodiscard]] LSTATUS WriteRegistryText(HKEY root, const Text& key, const Text& name, const Text& value);
[[nodiscard]] LSTATUS WriteRegistryNumber(HKEY root, const Text& key, const Text& name, std::uint32_t value);
// With everything below it. A key that is missing is no error.
[[nodiscard]] LSTATUS DeleteRegistryKey(HKEY root, const Text& key);

}  // namespace quorvel
