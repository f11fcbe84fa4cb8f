#include "platform/memory/memory_command_bars.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace quorvel {

namespace {

using Node = std::shared_ptr<MemoryBarControl>;
using Nodes = std::vector<Node>;

// The list of a bar or popup; `owner` keeps it alive.
class ControlsHandle : public BarControls {
 public:
  ControlsHandle(std::shared_ptr<void> owner, Nodes& nodes) : owner_(std::move(owner)), nodes_(nodes) {}

  int Count() override { return static_cast<int>(nodes_.size()); }
  std::unique_ptr<BarControl> Add(const NewBarControl& control) override;
  [[nodiscard]] std::unique_ptr<BarControl> Find(BarControlType type);

 private:
  std::shared_ptr<void> owner_;
  Nodes& nodes_;
};

class ControlHandle : public BarControl {
 public:
  // `siblings` is the list that the control is in.
  ControlHandle(Node node, std::shared_ptr<void> owner, Nodes& siblings)
      : node_(std::move(node)),
        owner_(std::move(owner)),
        siblings_(siblings),
        children_(node_, node_->children) {}
  ControlHandle(const ControlHandle&) = delete;
  ControlHandle& operator=(const ControlHandle&) = delete;
  ~ControlHandle() override { ForgetHandler(); }

  Text Caption() override { return node_->caption; }
  void SetCaption(TextView caption) override { node_->caption = caption; }
  void SetStyle(int style) override { node_->style = style; }
  void SetFaceId(int id) override { node_->face_id = id; }
  void PasteFace(const Face& face) override { node_->face = face; }
  void SetBeginGroup(bool begin) override { node_->begin_group = begin; }
  void SetVisible(bool visible) override { node_->visible = visible; }
  void SetEnabled(bool enabled) override { node_->enabled = enabled; }

  void OnClick(std::function<void()> handler) override {
    ForgetHandler();
    node_->handlers.emplace_back(this, std::move(handler));
  }

  void Delete() override { std::erase(siblings_, node_); }

  BarControls& Children() override {
    if (node_->type != BarControlType::kPopup) {
      throw RuntimeError(438, u"Object doesn't support this property or method");
    }
    return children_;
  }

 private:
  void ForgetHandler() {
    std::erase_if(node_->handlers, [this](const auto& entry) { return entry.first == this; });
  }

  Node node_;
  std::shared_ptr<void> owner_;
  Nodes& siblings_;
  ControlsHandle children_;
};

std::unique_ptr<BarControl> ControlsHandle::Add(const NewBarControl& control) {
  constexpr int kFirst = 1;  // also on an empty popup, where it is the end
  if (control.before < 0 || control.before > std::max(Count(), kFirst)) throw InvalidCall();
  const auto at = control.before == 0 ? nodes_.end() : nodes_.begin() + (control.before - 1);
  auto node = std::make_shared<MemoryBarControl>();
  node->type = control.type;
  nodes_.insert(at, node);
  return std::make_unique<ControlHandle>(std::move(node), owner_, nodes_);
}

std::unique_ptr<BarControl> ControlsHandle::Find(BarControlType type) {
  const auto found =
      std::find_if(nodes_.begin(), nodes_.end(), [type](const Node& node) { return node->type == type; });
  if (found == nodes_.end()) return nullptr;
  return std::make_unique<ControlHandle>(*found, owner_, nodes_);
}

class BarHandle : public CommandBar {
 public:
  explicit BarHandle(std::shared_ptr<MemoryBar> bar)
      : bar_(std::move(bar)), controls_(bar_, bar_->controls) {}

  BarControls& Controls() override { return controls_; }
  void SetVisible(bool visible) override { bar_->visible = visible; }
  std::unique_ptr<BarControl> FindControl(BarControlType type) override { return controls_.Find(type); }

 private:
  std::shared_ptr<MemoryBar> bar_;
  ControlsHandle controls_;
};

Node FindByCaption(const Nodes& nodes, TextView caption) {
  const auto found =
      std::find_if(nodes.begin(), nodes.end(), [&](const Node& node) { return node->caption == caption; });
  return found == nodes.end() ? nullptr : *found;
}

// The controls from the bar down to the end of the path; empty when a step is missing. A hidden toolbar
// counts as missing.
Nodes Steps(const MemoryCommandBars& bars, std::initializer_list<TextView> path) {
  if (path.size() == 0) return {};
  const auto* step = path.begin();
  const auto bar = std::find_if(bars.toolbars().begin(), bars.toolbars().end(), [&](const auto& toolbar) {
    return toolbar->visible && toolbar->name == *step;
  });
  const Nodes* level = &bars.menu_bar().controls;
  if (bar != bars.toolbars().end()) {
    level = &(*bar)->controls;
    ++step;
  }
  Nodes steps;
  for (; step != path.end(); ++step) {
    steps.push_back(FindByCaption(*level, *step));
    if (steps.back() == nullptr) return {};
    level = &steps.back()->children;
  }
  return steps;
}

}  // namespace

MemoryCommandBars::MemoryCommandBars(const std::vector<Text>& menus)
    : menu_bar_(std::make_shared<MemoryBar>()) {
  menu_bar_->name = u"Worksheet Menu Bar";
  menu_bar_->visible = true;
  for (const Text& menu : menus) {
    auto node = std::make_shared<MemoryBarControl>();
    node->type = BarControlType::kPopup;
    node->caption = menu;
    menu_bar_->controls.push_back(std::move(node));
  }
}

const MemoryBarControl* MemoryCommandBars::Find(std::initializer_list<TextView> path) const {
  const Nodes steps = Steps(*this, path);
  return steps.empty() ? nullptr : steps.back().get();
}

bool MemoryCommandBars::Click(std::initializer_list<TextView> path) {
  const Nodes steps = Steps(*this, path);
  const bool reachable = !steps.empty() && std::all_of(steps.begin(), steps.end(), [](const Node& node) {
    return node->visible && node->enabled;
  });
  if (!reachable) return false;
  const auto handlers = steps.back()->handlers;  // a handler may replace them
  for (const auto& [owner, handler] : handlers) handler();
  return true;
}

std::unique_ptr<CommandBar> MemoryCommandBars::Add(TextView name) {
  const bool taken =
      name == menu_bar_->name ||
      std::any_of(toolbars_.begin(), toolbars_.end(), [&](const auto& bar) { return bar->name == name; });
  if (taken) throw InvalidCall();
  toolbars_.push_back(std::make_shared<MemoryBar>());
  toolbars_.back()->name = name;
  return std::make_unique<BarHandle>(toolbars_.back());
}

std::unique_ptr<CommandBar> MemoryCommandBars::MenuBar() {
  return std::make_unique<BarHandle>(menu_bar_);
}

}  // namespace quorvel
