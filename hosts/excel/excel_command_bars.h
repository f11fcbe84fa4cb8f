#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "hosts/excel/button_events.h"
#include "hosts/excel/dispatch.h"
#include "platform/command_bars.h"

namespace quorvel {

// Office's command bars behind the core's interfaces, late bound. In Excel 2007 and later the controls appear
// on the ribbon's Add-Ins tab.

// Gives a share in what the click handlers work on, held while one runs: the host may disconnect meanwhile.
using ClickOwner = std::function<std::shared_ptr<void>()>;

class ExcelBarControls : public BarControls {
 public:
  ExcelBarControls(AutomationObject controls, ClickOwner owner)
      : controls_(std::move(controls)), owner_(std::move(owner)) {}

  [[nodiscard]] int Count() override;
  std::unique_ptr<BarControl> Add(const NewBarControl& control) override;

 private:
  AutomationObject controls_;
  ClickOwner owner_;
};

class ExcelBarControl : public BarControl {
 public:
  ExcelBarControl(AutomationObject control, ClickOwner owner)
      : control_(std::move(control)), owner_(std::move(owner)) {}

  [[nodiscard]] Text Caption() override;
  void SetCaption(TextView caption) override;
  void SetStyle(int style) override;
  void SetFaceId(int id) override;
  void PasteFace(const Face& face) override;
  void SetBeginGroup(bool begin) override;
  void SetVisible(bool visible) override;
  void SetEnabled(bool enabled) override;
  void OnClick(std::function<void()> handler) override;
  void Delete() override;
  [[nodiscard]] BarControls& Children() override;

 private:
  AutomationObject control_;
  ClickOwner owner_;
  std::optional<ExcelBarControls> children_;
  std::optional<ButtonEvents> events_;
};

class ExcelCommandBar : public CommandBar {
 public:
  ExcelCommandBar(const AutomationObject& bar, const ClickOwner& owner)
      : bar_(bar), owner_(owner), controls_(bar.GetChild(L"Controls"), owner) {}

  [[nodiscard]] BarControls& Controls() override { return controls_; }
  void SetVisible(bool visible) override;
  [[nodiscard]] std::unique_ptr<BarControl> FindControl(BarControlType type) override;

 private:
  AutomationObject bar_;
  ClickOwner owner_;
  ExcelBarControls controls_;
};

class ExcelCommandBars : public CommandBars {
 public:
  ExcelCommandBars(AutomationObject application, ClickOwner owner)
      : application_(std::move(application)), owner_(std::move(owner)) {}

  std::unique_ptr<CommandBar> Add(TextView name) override;
  [[nodiscard]] std::unique_ptr<CommandBar> MenuBar() override;

 private:
  AutomationObject application_;
  ClickOwner owner_;
};

}  // namespace quorvel
