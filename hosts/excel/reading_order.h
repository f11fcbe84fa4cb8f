#pragma once

#include "platform/text.h"

namespace quorvel {

// Whether the first letter with a direction runs from right to left.
[[nodiscard]] bool StartsRightToLeft(const Text& text);

}  // namespace quorvel
