#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "hosts/excel/win32.h"
#include "tests/excel/application.h"
#include "tests/excel/user.h"

namespace quorvel::tests {

// The add-in's DLL, which lies beside the test program.
inline constexpr wchar_t kDll[] = L"Quorvel.dll";

// Calls an entry point of the DLL that takes no arguments.
[[nodiscard]] HRESULT CallDll(const char* entry_point);

// While it lives, the user's registration of the add-in's class counts for the machine, too: Wine's COM,
// unlike that of Windows, does not look at the user's own classes.
class MachineClasses {
 public:
  MachineClasses();
  MachineClasses(const MachineClasses&) = delete;
  MachineClasses& operator=(const MachineClasses&) = delete;
  ~MachineClasses();
};

// Registers the DLL for each test and removes all traces afterwards, the add-in's settings included.
class RegisteredAddin : public testing::Test {
 public:
  ~RegisteredAddin() override;

 protected:
  RegisteredAddin();
  void TearDown() override;

  [[nodiscard]] std::shared_ptr<ControlData> ToolbarButton(TextView caption) const;
  [[nodiscard]] std::shared_ptr<ControlData> MenuItem(TextView caption) const;
  void ClickMenu(TextView caption) const { Click(*stand_in_.bars, MenuItem(caption)); }
  // An alert or message box of that title and text, confirmed with OK.
  void ExpectAlert(TextView title, TextView text);

  User user_;
  StandIn stand_in_;

 private:
  std::optional<MachineClasses> machine_classes_;
};

}  // namespace quorvel::tests
