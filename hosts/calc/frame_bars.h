#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <vector>

#include "hosts/calc/bar_commands.h"
#include "hosts/calc/main_thread.h"

namespace quorvel {

// Shows the bars in one window: toolbars of their own, and menus before the application's Help. They are
// elements of the window alone; nothing of them is ever stored. Throws UNO exceptions.
void ShowBars(const Context& context, const css::uno::Reference<css::frame::XFrame>& frame,
              const std::vector<BarLayout>& layouts);

}  // namespace quorvel
