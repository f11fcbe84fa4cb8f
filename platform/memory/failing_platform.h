#pragma once

#include <map>
#include <memory>
#include <string_view>

#include "platform/runtime_error.h"
#include "platform/settings.h"
#include "platform/workbook.h"

namespace quorvel {

// Which calls of a wrapped interface fail. Operations are named as the interfaces name them: "Sheet::Value",
// "Application::ActiveWorkbook", "BarControls::Add", "Settings::Write".
class Faults {
 public:
  static constexpr int kFromThenOn = -1;

  // The call of that number, counted from 1 after this, and `times - 1` more, throw `error`.
  void Fail(std::string_view operation, int number = 1, int times = kFromThenOn,
            const RuntimeError& error = {1004, u"Application-defined or object-defined error"});
  void Clear() { plans_.clear(); }

  // Called by the wrappers; throws when it is this call's turn.
  void Pass(std::string_view operation);

 private:
  struct Plan {
    int calls_left = 0;  // before the first failure
    int failures_left = 0;
    RuntimeError error;
  };

  std::map<std::string_view, Plan> plans_;
};

// Forwards every call, those on what it hands out included, unless its turn to fail has come.
class FailingApplication : public Application {
 public:
  FailingApplication(Application& target, Faults& faults);
  ~FailingApplication() override;

  [[nodiscard]] std::unique_ptr<Workbook> ActiveWorkbook() override;
  [[nodiscard]] CommandBars& Bars() override;

 private:
  Application& target_;
  Faults& faults_;
  std::unique_ptr<CommandBars> bars_;
};

class FailingSettings : public Settings {
 public:
  FailingSettings(Settings& target, Faults& faults) : target_(target), faults_(faults) {}

  [[nodiscard]] std::optional<Text> Read(const SettingPath& path) const override {
    return target_.Read(path);
  }
  void Write(const SettingPath& path, TextView value) override;

 private:
  Settings& target_;
  Faults& faults_;
};

}  // namespace quorvel
