#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <vector>

#include "addin/Connect.h"
#include "platform/memory/failing_platform.h"
#include "platform/memory/fixed_clock.h"
#include "platform/memory/memory_recordset.h"
#include "platform/memory/memory_settings.h"
#include "platform/memory/memory_workbook.h"
#include "platform/memory/scripted_forms.h"
#include "platform/memory/scripted_internet.h"
#include "send/frmSendSMS.h"

namespace quorvel {

// What an alert box showed.
struct Alert {
  Text message;
  int style = 0;
  Text title;

  friend bool operator==(const Alert&, const Alert&) = default;
};
void PrintTo(const Alert& alert, std::ostream* out);

// The alert that a run-time error ends in.
[[nodiscard]] Alert GeneralError(TextView description);

// An add-in connected to a host in memory at noon of the first of March 2024, with an empty workbook open.
// The test plays the user on the forms; alert boxes are recorded and closed.
class AddInTest : public testing::Test {
 protected:
  AddInTest();

  [[nodiscard]] MemorySheet& sheet() { return application_.workbook()->active(); }
  // Fills the sheet from row 1, column A.
  void Fill(std::initializer_list<std::initializer_list<CellValue>> rows);

  // Logs in "joe@x", password "p@w", through the login form; the account's gateway is sms.example, port 80.
  // Leaves no alert behind.
  void LogIn();

  // Opens the send form by its command, plays `user` on it and closes it. A form that opens while somebody is
  // logged in pulls the templates; the gateway answers `pulled`.
  void WithSendForm(const std::function<void(frmSendSMS&)>& user, std::string_view pulled = "");

  // The requests since the last call of this, LogIn or the pull of WithSendForm.
  std::vector<ScriptedInternet::Request> NewRequests();
  // The alerts since the last call of this or LogIn.
  std::vector<Alert> NewAlerts();

  FixedClock clock_{{.year = 2024, .month = 3, .day = 1, .hour = 12, .minute = 0, .second = 0}};
  MemoryApplication application_;
  MemorySettings settings_;
  MemoryRecordsets recordsets_{clock_};
  ScriptedForms forms_;
  ScriptedInternet internet_;
  Faults faults_;  // of the application and the settings
  FailingApplication failing_application_{application_, faults_};
  FailingSettings failing_settings_{settings_, faults_};
  Platform platform_{failing_application_, forms_, internet_,    failing_settings_,
                     recordsets_,          clock_, Windows1252()};
  Connect connect_{platform_};

 private:
  std::vector<Alert> alerts_;
  std::size_t requests_seen_ = 0;
};

}  // namespace quorvel
