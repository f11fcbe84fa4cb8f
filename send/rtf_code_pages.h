#pragma once

#include <optional>

namespace quorvel {

// The Windows code pages in which rich text writes its escaped bytes: 874, 932, 936, 949, 950 and 1250 to
// 1258. Any other number reads as 1252. U+FFFD stands for what a code page lacks.

// The code page of a font by its \fcharset; nothing for a charset that names none.
[[nodiscard]] std::optional<int> CodePageOfCharset(int charset);

// Whether `byte` is the first of two.
[[nodiscard]] bool IsLeadByte(int code_page, unsigned char byte);
[[nodiscard]] char16_t DecodeByte(int code_page, unsigned char byte);
[[nodiscard]] char16_t DecodePair(int code_page, unsigned char lead, unsigned char trail);

}  // namespace quorvel
