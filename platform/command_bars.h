#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/text.h"

namespace quorvel {

// A button face: 16 by 16 pixels from the top left, 0xAARRGGBB.
struct Face {
  static constexpr int kSize = 16;
  std::array<std::uint32_t, std::size_t{kSize} * kSize> pixels{};
};

enum class BarControlType { kButton = 1, kPopup = 10 };

// Icon and caption.
inline constexpr int kIconAndCaption = 3;

// What the host's command bars ask for a new control. All of the add-in's controls are temporary: they go
// with the host session.
struct NewBarControl {
  BarControlType type = BarControlType::kButton;
  // The position to insert it at, from 1; at the end when 0.
  int before = 0;
};

class BarControls;

// A button or popup on a command bar. Every member throws RuntimeError when the host refuses.
class BarControl {
 public:
  virtual ~BarControl() = default;

  [[nodiscard]] virtual Text Caption() = 0;
  virtual void SetCaption(TextView caption) = 0;
  virtual void SetStyle(int style) = 0;
  virtual void SetFaceId(int id) = 0;
  // Pastes `face` as the button's picture; the clipboard, where the host needs it, has its former content
  // afterwards.
  virtual void PasteFace(const Face& face) = 0;
  virtual void SetBeginGroup(bool begin) = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual void SetEnabled(bool enabled) = 0;
  // Runs `handler` at every click, until the control is destroyed here.
  virtual void OnClick(std::function<void()> handler) = 0;
  virtual void Delete() = 0;
  // The controls of a popup. Throws RuntimeError 438 on a button.
  [[nodiscard]] virtual BarControls& Children() = 0;
};

class BarControls {
 public:
  virtual ~BarControls() = default;

  [[nodiscard]] virtual int Count() = 0;
  virtual std::unique_ptr<BarControl> Add(const NewBarControl& control) = 0;
};

class CommandBar {
 public:
  virtual ~CommandBar() = default;

  [[nodiscard]] virtual BarControls& Controls() = 0;
  virtual void SetVisible(bool visible) = 0;
  // The first control of that type; null when there is none.
  [[nodiscard]] virtual std::unique_ptr<BarControl> FindControl(BarControlType type) = 0;
};

class CommandBars {
 public:
  virtual ~CommandBars() = default;

  // A new temporary toolbar. Throws RuntimeError 5 when there is one of that name.
  virtual std::unique_ptr<CommandBar> Add(TextView name) = 0;
  // The host's menu bar.
  [[nodiscard]] virtual std::unique_ptr<CommandBar> MenuBar() = 0;
};

}  // namespace quorvel
