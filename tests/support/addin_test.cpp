#include "tests/support/addin_test.h"

#include <ostream>
#include <utility>

#include "account/frmLogin.h"
#include "addin/common/AlertBox.h"
#include "platform/workbook.h"

namespace quorvel {

void PrintTo(const Alert& alert, std::ostream* out) {
  *out << ToUtf8(alert.title) << ": " << ToUtf8(alert.message) << " (" << alert.style << ")";
}

Alert GeneralError(TextView description) {
  return {u"Oops!!! there seems to be some problem. Please reopen excel file if it continues.\r\n" +
              Text(description),
          kCritical, u"Error"};
}

AddInTest::AddInTest() {
  application_.OpenWorkbook();
  forms_.On<AlertBox>([this](AlertBox& box) {
    alerts_.push_back({box.Text1.text(), box.style(), box.caption()});
    box.btnOk.UserPress();
  });
  connect_.OnConnection();
}

void AddInTest::Fill(std::initializer_list<std::initializer_list<CellValue>> rows) {
  std::int32_t row = 0;
  for (const auto& cells : rows) {
    ++row;
    std::int32_t column = 0;
    for (const CellValue& cell : cells) sheet().Set({ColumnLetters(++column), row}, cell);
  }
}

void AddInTest::LogIn() {
  forms_.On<frmLogin>([](frmLogin& form) {
    form.txtCRN.UserType(u"4711");
    form.txtUserName.UserType(u" joe@x ");
    form.txtPasswd.UserType(u"p@w");
    form.cmdLogin.UserPress();
  });
  internet_.Answer("[Success]sms.example");
  internet_.Answer("000");
  connect_.Login();
  ASSERT_TRUE(connect_.session().LoggedIn);
  requests_seen_ = internet_.requests().size();
  alerts_.clear();
}

void AddInTest::WithSendForm(const std::function<void(frmSendSMS&)>& user, std::string_view pulled) {
  forms_.On<frmSendSMS>([&](frmSendSMS& form) {
    requests_seen_ = internet_.requests().size();
    user(form);
    form.cmdClose.UserPress();
  });
  if (connect_.session().LoggedIn) internet_.Answer(pulled);
  connect_.SendSms();
}

std::vector<ScriptedInternet::Request> AddInTest::NewRequests() {
  const auto first = internet_.requests().begin() + static_cast<std::ptrdiff_t>(requests_seen_);
  requests_seen_ = internet_.requests().size();
  return {first, internet_.requests().end()};
}

std::vector<Alert> AddInTest::NewAlerts() {
  return std::exchange(alerts_, {});
}

}  // namespace quorvel
