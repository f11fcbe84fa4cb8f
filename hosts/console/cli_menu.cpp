#include "hosts/console/commands.h"

namespace quorvel {

namespace {

nlohmann::json Describe(const MemoryBarControl& control) {
  nlohmann::json children = nlohmann::json::array();
  for (const auto& child : control.children) children.push_back(Describe(*child));
  nlohmann::json described = {{"caption", ToUtf8(control.caption)},
                              {"enabled", control.enabled},
                              {"begins_group", control.begin_group}};
  if (control.type == BarControlType::kPopup) described["items"] = std::move(children);
  return described;
}

void PrintControls(const std::vector<std::shared_ptr<MemoryBarControl>>& controls, const std::string& indent,
                   Output& output) {
  for (const auto& control : controls) {
    if (!control->visible) continue;
    if (control->begin_group) output.Print({indent, "----\n"});
    output.Print(
        {indent, ToUtf8(Remove(control->caption, u"&")), control->enabled ? "" : " (disabled)", "\n"});
    PrintControls(control->children, indent + "  ", output);
  }
}

}  // namespace

ExitStatus RunMenu(ConsoleHost& host) {
  const MemoryCommandBars& bars = host.application().bars();
  Output& output = host.output();
  for (const auto& toolbar : bars.toolbars()) {
    if (!toolbar->visible) continue;
    output.Print({"Toolbar ", ToUtf8(toolbar->name), "\n"});
    PrintControls(toolbar->controls, "  ", output);
    nlohmann::json& controls = output.result()["toolbars"][ToUtf8(toolbar->name)] = nlohmann::json::array();
    for (const auto& control : toolbar->controls) controls.push_back(Describe(*control));
  }
  output.Print({"Menu\n"});
  PrintControls(bars.menu_bar().controls, "  ", output);
  nlohmann::json& menus = output.result()["menus"] = nlohmann::json::array();
  for (const auto& menu : bars.menu_bar().controls) menus.push_back(Describe(*menu));
  return ExitStatus::kDone;
}

}  // namespace quorvel
