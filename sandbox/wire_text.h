#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace quorvel::sandbox {

// Bytes of a request in windows-1252 as text, and text as bytes of a reply. A unit that windows-1252 lacks is
// answered as "?" and never as a look-alike: the protocol has no other way to return it.
[[nodiscard]] Text FromWire(std::string_view bytes);
[[nodiscard]] std::string ToWire(TextView text);

// Four hexadecimal digits a UTF-16 unit, as Unicode text arrives; nothing when `digits` has another form.
[[nodiscard]] std::optional<Text> FromHexText(std::string_view digits);

// Two upper-case hexadecimal digits a byte.
[[nodiscard]] std::string ToByteHex(std::string_view bytes);

}  // namespace quorvel::sandbox
