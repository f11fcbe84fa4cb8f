#pragma once

#include <gtest/gtest.h>

#include <string>

#include "hosts/excel/win32.h"
#include "tests/excel/application.h"
#include "tests/excel/user.h"

namespace quorvel::tests {

// The add-in's DLL, which lies beside the test program.
inline constexpr wchar_t kDll[] = L"Quorvel.dll";

// Calls an entry point of the DLL that takes no arguments.
[[nodiscard]] HRESULT CallDll(const char* entry_point);

// Registers the DLL for each test and removes all traces afterwards, the add-in's settings included.
class RegisteredAddin : public testing::Test {
 protected:
  RegisteredAddin();
  ~RegisteredAddin() override;
  void TearDown() override;

  [[nodiscard]] std::shared_ptr<ControlData> ToolbarButton(TextView caption) const;
  [[nodiscard]] std::shared_ptr<ControlData> MenuItem(TextView caption) const;
  void ClickMenu(TextView caption) const { Click(*stand_in_.bars, MenuItem(caption)); }
  // An alert or message box of that title and text, confirmed with OK.
  void ExpectAlert(TextView title, TextView text);

  User user_;
  StandIn stand_in_;
};

}  // namespace quorvel::tests
