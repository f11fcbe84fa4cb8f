#pragma once

#include <cstdint>
#include <optional>

#include "hosts/excel/button_events.h"
#include "hosts/excel/dispatch.h"
#include "platform/command_bars.h"

namespace quorvel {

// Office's command bars behind the core's interfaces, late bound. In Excel 2007 and later the controls appear
// on the ribbon's Add-Ins tab.

class ExcelBarControls : public BarControls {
 public:
  explicit ExcelBarControls(AutomationObject controls) : controls_(std::move(controls)) {}

  [[nodiscard]] int Count() override;
  std::unique_ptr<BarControl> Add(const NewBarControl& control) override;

 private:
  AutomationObject controls_;
};

class ExcelBarControl : public BarControl {
 public:
  explicit ExcelBarControl(AutomationObject control) : control_(std::move(control)) {}

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
  std::optional<ExcelBarControls> children_;
  std::optional<ButtonEvents> events_;
};

class ExcelCommandBar : public CommandBar {
 public:
  explicit ExcelCommandBar(const AutomationObject& bar) : bar_(bar), controls_(bar.GetChild(L"Controls")) {}

  [[nodiscard]] BarControls& Controls() override { return controls_; }
  void SetVisible(bool visible) override;
  [[nodiscard]] std::unique_ptr<BarControl> FindControl(BarControlType type) override;

 private:
  AutomationObject bar_;
  ExcelBarControls controls_;
};

class ExcelCommandBars : public CommandBars {
 public:
  explicit ExcelCommandBars(AutomationObject application) : application_(std::move(application)) {}

  std::unique_ptr<CommandBar> Add(TextView name) override;
  [[nodiscard]] std::unique_ptr<CommandBar> MenuBar() override;

 private:
  AutomationObject application_;
};

}  // namespace quorvel
