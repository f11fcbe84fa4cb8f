#pragma once

#include "platform/command_bars.h"

namespace quorvel {

// The pictures of the toolbar's buttons.
[[nodiscard]] Face SendFace();
[[nodiscard]] Face ProxyFace();
[[nodiscard]] Face HelpFace();

}  // namespace quorvel
