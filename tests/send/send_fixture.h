#pragma once

#include <string>
#include <string_view>

#include "tests/support/addin_test.h"

namespace quorvel {

inline constexpr TextView kSendTitle = u" S M S ";

// The body of a standard send without options; `tail` begins behind the sender.
[[nodiscard]] std::string StandardBody(std::string_view numbers, std::string_view message,
                                       std::string_view cells, std::string_view tail = "&IsConcatSMS=0");
// The body of a filtered or grouped send, the first of a session: the password is scrambled by the time and
// by a random number.
[[nodiscard]] std::string RecordsBody(std::string_view numbers, std::string_view message,
                                      std::string_view cells, std::string_view tail = "&IsConcatSMS=0&TOS=N");
[[nodiscard]] std::string UnicodeBody(std::string_view numbers, std::string_view message,
                                      std::string_view cells, std::string_view tail = "");

// A logged-in user who sends to the numbers in column A.
class SendTest : public AddInTest {
 protected:
  using User = std::function<void(frmSendSMS&)>;

  void SetUp() override { LogIn(); }

  // The user types the message, sets `options` and presses cmdSend. The gateway answers `reply` to the post;
  // exactly one is expected and returned.
  ScriptedInternet::Request Send(TextView message, const User& options = {}, std::string_view reply = "000");
  // The same where nothing may be posted.
  void ExpectNotSent(TextView message, const User& options = {}, SendOutcome outcome = SendOutcome::kNotSent);
  // Column A holds `count` different numbers of ten digits, from row 1.
  void FillNumbers(int count);
  // Presses the progress window's cancel button once its text is `text`.
  void CancelAt(TextView text);

  SendOutcome outcome_ = SendOutcome::kNotSent;
  std::string focus_;             // the control that had the focus after cmdSend
  std::string_view pulled_ = "";  // what the gateway answers to the form's pull

 private:
  void PressSend(TextView message, const User& options);
};

// Options of a send.
void ChooseSchedule(frmSendSMS& form);  // the 2nd of March 2024, 12:00 PM, titled "Later"
void ChooseFilter(frmSendSMS& form);    // the formula is asked for by an input box
void ChooseGroups(frmSendSMS& form);
void ChoosePreview(frmSendSMS& form);
void ChooseNoDuplicates(frmSendSMS& form);

}  // namespace quorvel
