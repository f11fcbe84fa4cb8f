#pragma once

#include "platform/code_page.h"
#include "platform/dates.h"
#include "platform/rnd.h"
#include "platform/text.h"

namespace quorvel {

// The form in which some operations carry the password: each character shifted by a key taken from the time
// and by its place, with the key and the key's place hidden in it. Two characters longer than `password`; the
// empty password gives the one character of code 1. Codes are those of the code page. Throws RuntimeError 5
// when a shifted code exceeds 255.
[[nodiscard]] Text ScramblePassword(TextView password, Date now, Rnd& rnd, const CodePage& code_page);

}  // namespace quorvel
