#pragma once

#include "platform/text.h"

namespace quorvel {

// The characters that a rich-text box shows for `rtf`, each unit as four upper-case hexadecimal digits. A
// paragraph's or line's end is CR LF; the paragraph end that the box closes every text with is left out.
// `rtf` may be broken anywhere: what can be read is. Sets `unicode_mode`, and never clears it, when the text
// is escaped byte-wise or holds a unit above 255.
[[nodiscard]] Text CONVERT_RTF_Hex(TextView rtf, bool& unicode_mode);

}  // namespace quorvel
