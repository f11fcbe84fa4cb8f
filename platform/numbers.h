#pragma once

#include <cstdint>

#include "platform/text.h"

namespace quorvel {

// Numbers of the language runtime under the en-US locale. Errors are RuntimeError 6 (Overflow) and 13 (Type
// mismatch).

// The number that `text` begins with, blanks, tabs and line feeds inside it skipped; 0 when there is none.
// Takes "&H" and "&O" prefixes and the exponent letters e and d. Never fails on text that is no number (the
// runtime's Val). Throws Overflow beyond the range of a double, TypeMismatch for a fraction with a % or &
// suffix.
[[nodiscard]] double Val(TextView text);

// Whole-text conversions (the runtime's CDbl, CLng, CInt). A text that is not a number as a whole, the empty
// one included, throws TypeMismatch; a value out of range Overflow. Fractions are rounded half to even. "&H"
// and
// "&O" spell bits: "&HFFFF" is 65535 as Double and Long, -1 as Integer.
[[nodiscard]] double ToDouble(TextView text);
[[nodiscard]] std::int32_t ToLong(TextView text);
[[nodiscard]] std::int16_t ToInteger(TextView text);
[[nodiscard]] std::int32_t ToLong(double value);
[[nodiscard]] std::int16_t ToInteger(double value);

// Whether ToDouble accepts `text` (the runtime's IsNumeric). "" is not numeric; "1e5", "(44)", "$5" and
// "&HFF" are.
[[nodiscard]] bool IsNumeric(TextView text);

// To the nearest whole number, halves to the even one.
[[nodiscard]] double RoundHalfEven(double value);

// At most 15 significant digits, "." as separator; fixed form up to 15 whole and 15 decimal digits, otherwise
// "1.5E+22" (the runtime's CStr). Minus zero is "0". Throws Overflow for infinity and NaN.
[[nodiscard]] Text NumberToText(double value);
[[nodiscard]] Text NumberToText(std::int32_t value);

// Upper-case hexadecimal digits without leading zeros; a negative value gives its 16-bit two's complement.
[[nodiscard]] Text Hex(std::int16_t value);

// 16-bit arithmetic with overflow checking. Throws Overflow.
[[nodiscard]] std::int16_t AddInteger(std::int16_t left, std::int16_t right);

}  // namespace quorvel
