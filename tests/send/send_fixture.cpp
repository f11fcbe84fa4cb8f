#include "send_fixture.h"

#include "addin/common/frmDisplay.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

std::string Join(std::initializer_list<std::string_view> parts) {
  std::string joined;
  for (const std::string_view part : parts) joined += part;
  return joined;
}

}  // namespace

std::string StandardBody(std::string_view numbers, std::string_view message, std::string_view cells,
                         std::string_view tail) {
  return Join({"mobilenumber=", numbers, "&message=", message, "&MMCellData=", cells,
               "&user=joe@x&passwd=p%40w&ver=1.0&SenderName=", tail});
}

// The key is 6, 2024 + 3 + 1 + 12 being 2040: "p@w" becomes "xG}", with the key in front of the third.
std::string RecordsBody(std::string_view numbers, std::string_view message, std::string_view cells,
                        std::string_view tail) {
  return Join({"mobilenumber=", numbers, "&message=", message, "&MMCellData=", cells,
               "&user=joe@x&passwd=xG%06%7D%03&ver=1.0&SenderName=", tail});
}

std::string UnicodeBody(std::string_view numbers, std::string_view message, std::string_view cells,
                        std::string_view tail) {
  return Join({"mobilenumber=", numbers, "&message=", message, "&MMCellData=", cells,
               "&user=joe%40x&passwd=p%40w&ver=1.2&isUnicodeSubmit=1&TOS=44&SenderName=", tail});
}

void SendTest::PressSend(TextView message, const User& options) {
  WithSendForm(
      [&](frmSendSMS& form) {
        form.cmbMobileNumbersCell.UserSelect(0);
        form.txtMsg_RTB.UserType(message);
        if (options) options(form);
        form.cmdSend.UserPress();
        outcome_ = form.outcome();
        focus_ = form.active_control()->name();
      },
      pulled_);
  EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr) << "the progress window stays open";
}

ScriptedInternet::Request SendTest::Send(TextView message, const User& options, std::string_view reply) {
  PressSend(message, [&](frmSendSMS& form) {
    if (options) options(form);
    internet_.Answer(reply);
  });
  const auto requests = NewRequests();
  EXPECT_EQ(requests.size(), 1U);
  return requests.empty() ? ScriptedInternet::Request{} : requests.front();
}

void SendTest::ExpectNotSent(TextView message, const User& options, SendOutcome outcome) {
  PressSend(message, options);
  EXPECT_TRUE(NewRequests().empty());
  EXPECT_EQ(outcome_, outcome);
}

void SendTest::FillNumbers(int count) {
  for (int row = 1; row <= count; ++row) sheet().Set({u"A", row}, 9000000000.0 + row);
}

void SendTest::CancelAt(TextView text) {
  forms_.OnYield([this, text = Text(text)] {
    clock_.Advance(1000);  // every text is shown
    auto* const window = forms_.Open<frmDisplay>();
    if (window != nullptr && window->lblProgress.caption() == text) window->Cancel_Process.UserPress();
  });
}

void ChooseSchedule(frmSendSMS& form) {
  form.cmdSchedulerPanel.UserPress();
  form.chkSetScheduler.UserSet(true);
  form.txt_SchedulerName.UserType(u"Later");
  form.combo_year.UserType(u"2024");
  form.combo_month.UserType(u"3");
  form.combo_dd.UserType(u"2");
  form.combo_Times.UserType(u"12:00 PM");
}

void ChooseFilter(frmSendSMS& form) {
  form.cmdSearchPanel.UserPress();
  form.cmdFilter.UserPress();
}

void ChooseGroups(frmSendSMS& form) {
  form.cmdSettingsPanel.UserPress();
  form.chkAdvance.UserSet(true);
}

void ChoosePreview(frmSendSMS& form) {
  form.ChkPreview.UserSet(true);
}

void ChooseNoDuplicates(frmSendSMS& form) {
  form.cmdSettingsPanel.UserPress();
  form.Check_RemoveDuplicates.UserSet(true);
}

}  // namespace quorvel
