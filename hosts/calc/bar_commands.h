#pragma once

#include <vector>

#include "hosts/calc/uno_text.h"
#include "platform/memory/memory_command_bars.h"

namespace quorvel {

// The add-in's commands are addresses of this protocol: "vnd.quorvel:toolbar/SendSMS",
// "vnd.quorvel:menu/Login".
inline constexpr TextView kProtocol = u"vnd.quorvel:";

// One button of the add-in's toolbar or menu.
struct BarCommand {
  Text url;
  TextView bar;  // a toolbar's name or the menu's caption
  const MemoryBarControl* control = nullptr;
};

// A toolbar or a menu of the add-in, with its buttons in order.
struct BarLayout {
  bool menu = false;
  Text caption;
  std::vector<BarCommand> commands;
};

// The add-in's visible bars: `bars` outlives the answer.
[[nodiscard]] std::vector<BarLayout> BarLayouts(const MemoryCommandBars& bars);

}  // namespace quorvel
