#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace quorvel {

// How many SMS the gateway charges for a message of `length` UTF-16 units, and the texts that the preview
// shows. The rules are the gateway's tariff as the users know it, oddities included, and not those of the GSM
// standard.

// Unicode messages: a 63rd of the length rounded up; no allowance for a single message. 0 for an empty one.
[[nodiscard]] std::int32_t UnicodeSmsCount(std::size_t length);
// A 189th of the length, rounded up.
[[nodiscard]] std::int32_t UnicodeLongSmsCount(std::size_t length);

// Text messages: 1 up to 160; above, the 153rd part rounded up to 20, rounded to the nearest (halves to even)
// from there on, and 1 where it is exactly a whole number up to 20. Throws Overflow beyond 16 bits.
[[nodiscard]] std::int16_t GsmSmsCount(std::size_t length);
// "1" below 460 and where the 459th part is exactly a whole number up to 8; rounded up below 8; the unrounded
// quotient above.
[[nodiscard]] Text GsmLongSmsCount(std::size_t length);

}  // namespace quorvel
