#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

#include "platform/command_bars.h"

namespace quorvel {

// What was made of one control of a bar held in memory; shared by the bar and the handles to it.
struct MemoryBarControl {
  BarControlType type = BarControlType::kButton;
  Text caption;
  int style = 0;
  int face_id = 0;
  std::optional<Face> face;  // the one that was pasted
  bool begin_group = false;
  bool visible = true;
  bool enabled = true;
  std::vector<std::shared_ptr<MemoryBarControl>> children;              // of a popup, in order
  std::vector<std::pair<const void*, std::function<void()>>> handlers;  // by the handle that set them
};

struct MemoryBar {
  Text name;
  bool visible = false;
  std::vector<std::shared_ptr<MemoryBarControl>> controls;
};

// Toolbars and a menu bar that remember what they were given.
class MemoryCommandBars : public CommandBars {
 public:
  // `menus` are the captions of the popups that the host's menu bar has from the start.
  explicit MemoryCommandBars(const std::vector<Text>& menus = {});

  [[nodiscard]] const MemoryBar& menu_bar() const { return *menu_bar_; }
  [[nodiscard]] const std::vector<std::shared_ptr<MemoryBar>>& toolbars() const { return toolbars_; }

  // The control at the end of `path`: a toolbar's name or a menu's caption, then captions. Null when there is
  // none.
  [[nodiscard]] const MemoryBarControl* Find(std::initializer_list<TextView> path) const;

  // The user's click on the control at the end of `path`. False, and nothing happens, when the control is
  // missing, or it or something above it is hidden or disabled.
  bool Click(std::initializer_list<TextView> path);

  std::unique_ptr<CommandBar> Add(TextView name) override;
  [[nodiscard]] std::unique_ptr<CommandBar> MenuBar() override;

 private:
  std::shared_ptr<MemoryBar> menu_bar_;
  std::vector<std::shared_ptr<MemoryBar>> toolbars_;
};

}  // namespace quorvel
