#pragma once

#include <cstdint>

#include "platform/form.h"
#include "platform/forms.h"
#include "preview/preview_state.h"

namespace quorvel {

// Shows the messages of a send one at a time with their SMS counts; the user sends them all or none. Only
// ever shown with at least one message.
class frmPreviewSMS : public Form {
 public:
  explicit frmPreviewSMS(PreviewState& state);

  Label lblMobileNumber{*this, "lblMobileNumber", {10, 12, 70, 10}, u"Mobile Number :"};
  TextBox txt_mno{*this, "txt_mno", {84, 8, 110, 16}};
  Label label_SMSCount{*this, "label_SMSCount", {200, 12, 70, 10}};
  Label lblMessageBody{*this, "lblMessageBody", {10, 30, 100, 10}, u"Message Body :-"};
  TextBox txt_msg{*this, "txt_msg", {10, 42, 260, 86}, TextBox::Style::kRichText};
  TextBox txt_msg_old{*this, "txt_msg_old", {10, 42, 260, 86}, TextBox::Style::kRichText};
  Label lblCharacters{*this, "lblCharacters", {10, 138, 92, 10}, u"Number Of Characters"};
  TextBox txt_char_count{*this, "txt_char_count", {104, 134, 36, 16}};
  Label lblSMSs{*this, "lblSMSs", {10, 158, 92, 10}, u"Number Of SMS's"};
  TextBox txt_sms_count{*this, "txt_sms_count", {104, 154, 36, 16}};
  Label lblLongSMSs{*this, "lblLongSMSs", {10, 178, 92, 10}, u"Number Of Long SMS's"};
  TextBox txt_LongSMSs{*this, "txt_LongSMSs", {104, 174, 36, 16}};
  Label lblTotal1{*this, "lblTotal1", {160, 138, 74, 10}, u"Total Number"};
  Label lblTotal2{*this, "lblTotal2", {160, 150, 74, 10}, u"Of SMS Charged ="};
  Label label_Total_SMSs{*this, "label_Total_SMSs", {236, 150, 34, 10}};
  Button cmdPrevious{*this, "cmdPrevious", {10, 200, 74, 18}, u"<< Previous SMS"};
  Button cmdNext{*this, "cmdNext", {88, 200, 62, 18}, u"Next SMS >>"};
  Button cmdContinueSMS{*this, "cmdContinueSMS", {156, 200, 56, 18}, u"Send SMS", Button::Role::kDefault};
  Button cmdCancel{*this, "cmdCancel", {216, 200, 54, 18}, u"Cancel", Button::Role::kCancel};

 protected:
  void Form_Load() override;

 private:
  void ShowPreviewMessage(std::int16_t index);
  void ShowBatchTotal();
  void cmdNext_Click();
  void cmdPrevious_Click();
  void cmdContinueSMS_Click();
  void cmdCancel_Click();
  void txt_msg_GotFocus();

  PreviewState& state_;
  std::int16_t current_ = 0;  // from 1
  std::int16_t count_ = 0;
};

// Shows the stored messages and empties both lists. Whether the user approved. Throws Overflow for more
// messages or SMS than 16 bits count.
[[nodiscard]] bool ApprovePreview(Forms& forms, PreviewState& state);

}  // namespace quorvel
