#pragma once

#include "platform/code_page.h"
#include "platform/forms.h"
#include "platform/text.h"

namespace quorvel {

// Whether `text` holds a unit that 8 bits cannot carry: U+0100 to U+7FFF. Codes are signed 16-bit numbers to
// the runtime, so units from U+8000 on do not count. A text longer than 32767 units is an error, which is
// shown and answers false.
[[nodiscard]] bool IsUnicode(Forms& forms, TextView text);

// Four upper-case hexadecimal digits for each unit. A text of blanks only, or none, is one blank. A text
// longer than 32767 units gives a text that says so in place of the digits.
[[nodiscard]] Text conStringToHex(TextView text);
// The same conversion, despite its name; no conversion from four-digit groups back to text exists.
[[nodiscard]] Text conHexToString(TextView text);

// One character for every two digits of `hex`, of the code that they give. Throws RuntimeError 13 for what is
// no hexadecimal digit.
[[nodiscard]] Text GetStringFromHex(TextView hex, const CodePage& code_page);

}  // namespace quorvel
