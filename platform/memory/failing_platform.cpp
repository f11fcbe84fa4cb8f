#include "platform/memory/failing_platform.h"

namespace quorvel {

namespace {

class FailingSheet : public Sheet {
 public:
  FailingSheet(std::unique_ptr<Sheet> target, Faults& faults) : target_(std::move(target)), faults_(faults) {}

  std::int32_t UsedRows() override { return Passing("Sheet::UsedRows").UsedRows(); }
  std::int32_t UsedColumns() override { return Passing("Sheet::UsedColumns").UsedColumns(); }
  std::int32_t RowLimit() override { return Passing("Sheet::RowLimit").RowLimit(); }
  CellValue Value(const CellAddress& address) override { return Passing("Sheet::Value").Value(address); }
  Text CellText(const CellAddress& address) override { return Passing("Sheet::CellText").CellText(address); }
  void SelectColumn(std::int32_t column) override { Passing("Sheet::SelectColumn").SelectColumn(column); }
  void Write(const CellAddress& address, TextView text) override {
    Passing("Sheet::Write").Write(address, text);
  }
  void BoldCell(const CellAddress& address) override { Passing("Sheet::BoldCell").BoldCell(address); }

 private:
  Sheet& Passing(std::string_view operation) {
    faults_.Pass(operation);
    return *target_;
  }

  std::unique_ptr<Sheet> target_;
  Faults& faults_;
};

class FailingWorkbook : public Workbook {
 public:
  FailingWorkbook(std::unique_ptr<Workbook> target, Faults& faults)
      : target_(std::move(target)), faults_(faults) {}

  std::unique_ptr<Sheet> ActiveSheet() override {
    faults_.Pass("Workbook::ActiveSheet");
    return std::make_unique<FailingSheet>(target_->ActiveSheet(), faults_);
  }
  std::vector<Text> SheetNames() override {
    faults_.Pass("Workbook::SheetNames");
    return target_->SheetNames();
  }
  std::unique_ptr<Sheet> AddSheet(TextView name) override {
    faults_.Pass("Workbook::AddSheet");
    return std::make_unique<FailingSheet>(target_->AddSheet(name), faults_);
  }

 private:
  std::unique_ptr<Workbook> target_;
  Faults& faults_;
};

class FailingBarControls : public BarControls {
 public:
  FailingBarControls(BarControls& target, Faults& faults) : target_(target), faults_(faults) {}

  int Count() override {
    faults_.Pass("BarControls::Count");
    return target_.Count();
  }
  std::unique_ptr<BarControl> Add(const NewBarControl& control) override;

 private:
  BarControls& target_;
  Faults& faults_;
};

class FailingBarControl : public BarControl {
 public:
  FailingBarControl(std::unique_ptr<BarControl> target, Faults& faults)
      : target_(std::move(target)), faults_(faults) {}

  Text Caption() override { return Passing("BarControl::Caption").Caption(); }
  void SetCaption(TextView caption) override { Passing("BarControl::SetCaption").SetCaption(caption); }
  void SetStyle(int style) override { Passing("BarControl::SetStyle").SetStyle(style); }
  void SetFaceId(int id) override { Passing("BarControl::SetFaceId").SetFaceId(id); }
  void PasteFace(const Face& face) override { Passing("BarControl::PasteFace").PasteFace(face); }
  void SetBeginGroup(bool begin) override { Passing("BarControl::SetBeginGroup").SetBeginGroup(begin); }
  void SetVisible(bool visible) override { Passing("BarControl::SetVisible").SetVisible(visible); }
  void SetEnabled(bool enabled) override { Passing("BarControl::SetEnabled").SetEnabled(enabled); }
  void OnClick(std::function<void()> handler) override {
    Passing("BarControl::OnClick").OnClick(std::move(handler));
  }
  void Delete() override { Passing("BarControl::Delete").Delete(); }
  BarControls& Children() override {
    children_ = std::make_unique<FailingBarControls>(Passing("BarControl::Children").Children(), faults_);
    return *children_;
  }

 private:
  BarControl& Passing(std::string_view operation) {
    faults_.Pass(operation);
    return *target_;
  }

  std::unique_ptr<BarControl> target_;
  Faults& faults_;
  std::unique_ptr<BarControls> children_;
};

std::unique_ptr<BarControl> FailingBarControls::Add(const NewBarControl& control) {
  faults_.Pass("BarControls::Add");
  return std::make_unique<FailingBarControl>(target_.Add(control), faults_);
}

class FailingBar : public CommandBar {
 public:
  FailingBar(std::unique_ptr<CommandBar> target, Faults& faults)
      : target_(std::move(target)), faults_(faults), controls_(target_->Controls(), faults) {}

  BarControls& Controls() override { return controls_; }
  void SetVisible(bool visible) override {
    faults_.Pass("CommandBar::SetVisible");
    target_->SetVisible(visible);
  }
  std::unique_ptr<BarControl> FindControl(BarControlType type) override {
    faults_.Pass("CommandBar::FindControl");
    auto found = target_->FindControl(type);
    if (found == nullptr) return nullptr;
    return std::make_unique<FailingBarControl>(std::move(found), faults_);
  }

 private:
  std::unique_ptr<CommandBar> target_;
  Faults& faults_;
  FailingBarControls controls_;
};

class FailingBars : public CommandBars {
 public:
  FailingBars(CommandBars& target, Faults& faults) : target_(target), faults_(faults) {}

  std::unique_ptr<CommandBar> Add(TextView name) override {
    faults_.Pass("CommandBars::Add");
    return std::make_unique<FailingBar>(target_.Add(name), faults_);
  }
  std::unique_ptr<CommandBar> MenuBar() override {
    faults_.Pass("CommandBars::MenuBar");
    return std::make_unique<FailingBar>(target_.MenuBar(), faults_);
  }

 private:
  CommandBars& target_;
  Faults& faults_;
};

}  // namespace

void Faults::Fail(std::string_view operation, int number, int times, const RuntimeError& error) {
  plans_.insert_or_assign(operation, Plan{.calls_left = number - 1, .failures_left = times, .error = error});
}

void Faults::Pass(std::string_view operation) {
  const auto found = plans_.find(operation);
  if (found == plans_.end()) return;
  Plan& plan = found->second;
  if (plan.calls_left > 0) {
    --plan.calls_left;
    return;
  }
  if (plan.failures_left == 0) return;
  if (plan.failures_left > 0) --plan.failures_left;
  throw plan.error;
}

FailingApplication::FailingApplication(Application& target, Faults& faults)
    : target_(target), faults_(faults), bars_(std::make_unique<FailingBars>(target.Bars(), faults)) {}

FailingApplication::~FailingApplication() = default;

std::unique_ptr<Workbook> FailingApplication::ActiveWorkbook() {
  faults_.Pass("Application::ActiveWorkbook");
  auto workbook = target_.ActiveWorkbook();
  if (workbook == nullptr) return nullptr;
  return std::make_unique<FailingWorkbook>(std::move(workbook), faults_);
}

CommandBars& FailingApplication::Bars() {
  faults_.Pass("Application::Bars");
  return *bars_;
}

void FailingSettings::Write(const SettingPath& path, TextView value) {
  faults_.Pass("Settings::Write");
  target_.Write(path, value);
}

}  // namespace quorvel
