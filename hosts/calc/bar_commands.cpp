#include "hosts/calc/bar_commands.h"

namespace quorvel {

namespace {

Text Letters(TextView caption) {
  return Remove(caption, u" &.");
}

void AddCommands(const std::vector<std::shared_ptr<MemoryBarControl>>& controls, TextView folder,
                 TextView bar, BarLayout& layout) {
  for (const auto& control : controls) {
    if (!control->visible || control->type != BarControlType::kButton) continue;
    layout.commands.push_back(
        {Text(kProtocol) + Text(folder) + Letters(control->caption), bar, control.get()});
  }
}

}  // namespace

std::vector<BarLayout> BarLayouts(const MemoryCommandBars& bars) {
  std::vector<BarLayout> layouts;
  for (const auto& toolbar : bars.toolbars()) {
    if (!toolbar->visible) continue;
    AddCommands(toolbar->controls, u"toolbar/", toolbar->name,
                layouts.emplace_back(BarLayout{.menu = false, .caption = toolbar->name, .commands = {}}));
  }
  for (const auto& popup : bars.menu_bar().controls) {
    if (!popup->visible || popup->children.empty()) continue;
    AddCommands(popup->children, u"menu/", popup->caption,
                layouts.emplace_back(BarLayout{.menu = true, .caption = popup->caption, .commands = {}}));
  }
  return layouts;
}

}  // namespace quorvel
