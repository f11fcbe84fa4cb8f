#pragma once

#include <functional>
#include <vector>

#include "account/context.h"
#include "platform/form.h"
#include "preview/preview_state.h"
#include "send/send_choices.h"

namespace quorvel {

// What the account panel's buttons do.
struct AccountCommands {
  std::function<void()> balance;
  std::function<void()> modes;
  std::function<void()> reports;
};

// The bulk send form.
class frmSendSMS : public Form {
 public:
  frmSendSMS(const AddInContext& context, PreviewState& preview, AccountCommands account_commands);

  Frame Frame_Recipients{*this, "Frame_Recipients", {8, 4, 214, 58}, u"Recipients"};
  Label lblMobileNumbers{
      Frame_Recipients, "lblMobileNumbers", {16, 20, 94, 10}, u"&Mobile numbers in column"};
  ComboBox cmbMobileNumbersCell{Frame_Recipients, "cmbMobileNumbersCell", {112, 16, 56, 16}};
  CheckBox chkAddCountryCode{Frame_Recipients, "chkAddCountryCode", {16, 40, 84, 12}, u"Add &country code"};
  TextBox txtCountryCode{Frame_Recipients, "txtCountryCode", {102, 38, 34, 16}};
  Label lblCountryCodeLength{Frame_Recipients, "lblCountryCodeLength", {138, 42, 38, 10}, u"if len&gth is"};
  ComboBox ComboCountryCodeLength{Frame_Recipients, "ComboCountryCodeLength", {176, 38, 38, 16}};

  Frame Frame_Rows{*this, "Frame_Rows", {8, 64, 214, 84}, u"Rows"};
  OptionButton optAllRows{Frame_Rows, "optAllRows", {16, 76, 80, 12}, u"&All rows"};
  OptionButton optRowRange{Frame_Rows, "optRowRange", {16, 94, 52, 12}, u"Start &Row"};
  TextBox txtStartRow{Frame_Rows, "txtStartRow", {70, 92, 48, 16}};
  Label lblEndRow{Frame_Rows, "lblEndRow", {124, 96, 38, 10}, u"E&nd Row"};
  TextBox txtEndRow{Frame_Rows, "txtEndRow", {166, 92, 48, 16}};
  OptionButton optRows{Frame_Rows, "optRows", {16, 114, 52, 12}, u"R&ows"};
  TextBox txtRows{Frame_Rows, "txtRows", {70, 112, 144, 16}};
  Label lblRowsHint{
      Frame_Rows, "lblRowsHint", {16, 132, 200, 10}, u"Enter The Ranges Of Rows Ex:- 2-10, 25-35, etc"};

  Frame Frame_Message{*this, "Frame_Message", {8, 150, 214, 114}, u"Message"};
  TextBox txtMsg_RTB{Frame_Message, "txtMsg_RTB", {16, 162, 198, 64}, TextBox::Style::kRichText};
  CheckBox ChkBox_EnglishSMS{Frame_Message, "ChkBox_EnglishSMS", {16, 230, 62, 12}, u"English SMS"};
  CheckBox ChkBox_LanguageSMS{Frame_Message, "ChkBox_LanguageSMS", {78, 230, 66, 12}, u"Language SMS"};
  CheckBox chkFlash{Frame_Message, "chkFlash", {144, 230, 76, 12}, u"English Flash SMS"};
  CheckBox ChkBox_WAPPush{Frame_Message, "ChkBox_WAPPush", {16, 246, 62, 12}, u"WAP Push SMS"};
  TextBox txtWAP_URL{Frame_Message, "txtWAP_URL", {82, 244, 132, 16}};

  Frame senderID_Frame{*this, "senderID_Frame", {8, 266, 214, 32}, u"Sender"};
  Label Label10{senderID_Frame, "Label10", {16, 280, 50, 10}, u"Sender &ID"};
  ComboBox Combo_SenderID{senderID_Frame, "Combo_SenderID", {70, 276, 144, 16}, ComboBox::Style::kEditable};

  Button cmdEmailPanel{*this, "cmdEmailPanel", {230, 6, 69, 16}, u"&E-mail"};
  Button cmdSearchPanel{*this, "cmdSearchPanel", {302, 6, 69, 16}, u"&Filter"};
  Button cmdSettingsPanel{*this, "cmdSettingsPanel", {374, 6, 70, 16}, u"Se&ttings"};
  Button cmdSchedulerPanel{*this, "cmdSchedulerPanel", {230, 25, 69, 16}, u"Sche&duler"};
  Button cmdTemplatesPanel{*this, "cmdTemplatesPanel", {302, 25, 69, 16}, u"Temp&lates"};
  Button cmdAccountPanel{*this, "cmdAccountPanel", {374, 25, 70, 16}, u"Acco&unt"};

  Frame Frame_Email{*this, "Frame_Email", kPanel, u"E-mail copy"};
  CheckBox Chk_SendEmail{
      Frame_Email, "Chk_SendEmail", {238, 60, 190, 12}, u"Send a copy of every message by e-mail"};
  Label lblEmailSubject{Frame_Email, "lblEmailSubject", {238, 82, 60, 10}, u"Subject"};
  TextBox txtEmailSubject{Frame_Email, "txtEmailSubject", {302, 78, 134, 16}};
  Label lblEmailColumn{Frame_Email, "lblEmailColumn", {238, 104, 60, 10}, u"Address column"};
  ComboBox Combo_EmailColumn{Frame_Email, "Combo_EmailColumn", {302, 100, 56, 16}};
  CheckBox Chk_FastProcessing{
      Frame_Email, "Chk_FastProcessing", {238, 126, 190, 12}, u"Send it from my own e-mail account"};
  Label lblFromEmailID{Frame_Email, "lblFromEmailID", {238, 148, 60, 10}, u"E-mail account"};
  TextBox txt_FromEmailID{Frame_Email, "txt_FromEmailID", {302, 144, 134, 16}};
  Label lblFromEmailPwd{Frame_Email, "lblFromEmailPwd", {238, 170, 60, 10}, u"Its password"};
  TextBox txt_FromEmailPwd{Frame_Email, "txt_FromEmailPwd", {302, 166, 134, 16}, TextBox::Style::kPassword};

  Frame Frame_Search{*this, "Frame_Search", kPanel, u"Filter"};
  Label lblFilterHint{Frame_Search,
                      "lblFilterHint",
                      {238, 62, 198, 20},
                      u"Send only to those of the chosen rows that satisfy a formula."};
  Button cmdFilter{Frame_Search, "cmdFilter", {238, 86, 80, 18}, u"Set filter..."};
  Label lblFilter{Frame_Search, "lblFilter", {238, 112, 198, 60}};

  Frame Frame_Settings{*this, "Frame_Settings", kPanel, u"Settings"};
  CheckBox Check_RemoveDuplicates{
      Frame_Settings, "Check_RemoveDuplicates", {238, 60, 198, 12}, u"Ignore Duplicate Mobile Numbers"};
  CheckBox chkAdvance{Frame_Settings, "chkAdvance", {238, 80, 198, 12}, u"Advance Options"};
  Label lblAdvance{Frame_Settings,
                   "lblAdvance",
                   {248, 94, 188, 20},
                   u"Rows of one number become one message, a line each."};
  Label lblHeader{Frame_Settings, "lblHeader", {248, 122, 50, 10}, u"First line"};
  TextBox txt_header{Frame_Settings, "txt_header", {302, 118, 134, 16}};
  Label lblFooter{Frame_Settings, "lblFooter", {248, 144, 50, 10}, u"Last line"};
  TextBox txt_footer{Frame_Settings, "txt_footer", {302, 140, 134, 16}};

  Frame frame_Scheduler_Details{*this, "frame_Scheduler_Details", kPanel, u"Scheduler"};
  CheckBox chkSetScheduler{
      frame_Scheduler_Details, "chkSetScheduler", {238, 60, 198, 12}, u"Send at a later time"};
  Label lblSchedulerName{frame_Scheduler_Details, "lblSchedulerName", {238, 82, 60, 10}, u"Title"};
  TextBox txt_SchedulerName{frame_Scheduler_Details, "txt_SchedulerName", {302, 78, 134, 16}};
  Label lblSchedulerDate{frame_Scheduler_Details, "lblSchedulerDate", {238, 104, 62, 10}, u"Month/day/year"};
  ComboBox combo_month{
      frame_Scheduler_Details, "combo_month", {302, 100, 38, 16}, ComboBox::Style::kEditable};
  ComboBox combo_dd{frame_Scheduler_Details, "combo_dd", {344, 100, 38, 16}, ComboBox::Style::kEditable};
  ComboBox combo_year{frame_Scheduler_Details, "combo_year", {386, 100, 50, 16}, ComboBox::Style::kEditable};
  Label lblSchedulerTime{frame_Scheduler_Details, "lblSchedulerTime", {238, 126, 60, 10}, u"Time"};
  ComboBox combo_Times{
      frame_Scheduler_Details, "combo_Times", {302, 122, 80, 16}, ComboBox::Style::kEditable};
  Label lblSchedulerDateTime{
      frame_Scheduler_Details, "lblSchedulerDateTime", {238, 148, 62, 10}, u"Date by column"};
  ComboBox cmbSchedulerDateTime{frame_Scheduler_Details, "cmbSchedulerDateTime", {302, 144, 56, 16}};
  CheckBox chkNotifyMe{
      frame_Scheduler_Details, "chkNotifyMe", {238, 168, 198, 12}, u"Notify me when it is sent"};

  Frame Frame_Templates{*this, "Frame_Templates", kPanel, u"Templates"};
  Label lblMsgNames{Frame_Templates, "lblMsgNames", {238, 64, 60, 10}, u"Template"};
  ComboBox combo_display_MsgNames{Frame_Templates, "combo_display_MsgNames", {302, 60, 134, 16}};
  TextBox txtMsg_TemplateBox{
      Frame_Templates, "txtMsg_TemplateBox", {238, 82, 198, 70}, TextBox::Style::kMultiLine};
  Button btn_addTemplateToMsgBox{
      Frame_Templates, "btn_addTemplateToMsgBox", {238, 158, 96, 16}, u"Put into the message"};
  Button btn_DeleteMsg{Frame_Templates, "btn_DeleteMsg", {340, 158, 96, 16}, u"Delete template"};
  CheckBox chkBox_SaveMsg{
      Frame_Templates, "chkBox_SaveMsg", {238, 182, 198, 12}, u"Save this message as a template"};
  TextBox txt_MsgName{Frame_Templates, "txt_MsgName", {238, 198, 134, 16}};
  Button SaveMsgText{Frame_Templates, "SaveMsgText", {378, 198, 58, 16}, u"Save"};
  Button btn_getTemplates{Frame_Templates, "btn_getTemplates", {238, 224, 96, 16}, u"Get templates"};
  Button cmd_GetSenderIDs{Frame_Templates, "cmd_GetSenderIDs", {340, 224, 96, 16}, u"Get sender IDs"};

  Frame Frame_Account{*this, "Frame_Account", kPanel, u"Account"};
  Button cmdBalance{Frame_Account, "cmdBalance", {238, 62, 110, 18}, u"Credit balance"};
  Button cmdModes{Frame_Account, "cmdModes", {238, 86, 110, 18}, u"Get submission modes"};
  Button cmdReports{Frame_Account, "cmdReports", {238, 110, 110, 18}, u"Delivery reports..."};

  CheckBox ChkPreview{*this, "ChkPreview", {230, 256, 214, 12}, u"Show a &preview before sending"};
  Button cmdSend{*this, "cmdSend", {302, 280, 69, 18}, u"&Send SMS", Button::Role::kDefault};
  Button cmdClose{*this, "cmdClose", {374, 280, 70, 18}, u"Close", Button::Role::kCancel};
  Timer TimerPullSIDnTemplates{*this, "TimerPullSIDnTemplates", 3000};

  // How the last press of cmdSend ended.
  [[nodiscard]] SendOutcome outcome() const { return outcome_; }
  // What a pull and the saves have brought: the text of each name of combo_display_MsgNames, by its index,
  // but for deletions, which move the names and not the texts.
  [[nodiscard]] const std::vector<Text>& template_texts() const { return TemplateTexts; }
  [[nodiscard]] const Text& sender_id_list() const { return SenderIdList; }

 protected:
  void Form_Load() override;

 private:
  static constexpr Bounds kPanel{230, 46, 214, 202};

  // frmSendSMS.cpp: what the controls offer and what they keep.
  void WireOptions();
  void WirePanels();
  void FillColumnPickers();
  void FillCountryCode();
  void LoadOptions();
  void ShowPanel(Frame& panel);
  void ShowFilter();
  void ChooseService(CheckBox& chosen);
  void UpdateEnabled();
  void Chk_FastProcessing_Click();
  void cmbMobileNumbersCell_Click();
  void cmdFilter_Click();

  // frmSendSMS_dates.cpp: the date pickers.
  void WireDates();
  void FillDates();
  void FillMonths();
  void FillDays();
  void FillTimes();

  // frmSendSMS_templates.cpp: templates and sender IDs kept at the gateway.
  void WireTemplates();
  void LoadTemplates();
  void PullTemplatesAndSenderIds();
  void ShowTemplateError();
  bool LoginForTemplates();
  void btn_getTemplates_Click();
  void TimerPullSIDnTemplates_Timer();
  void combo_display_MsgNames_Click();
  void chkBox_SaveMsg_Click();
  void txt_MsgName_Click();
  void SaveMsgText_Click();
  void btn_DeleteMsg_Click();

  // frmSendSMS_send.cpp: the send command.
  struct RowMessages {
    TextView missing;
    TextView not_numeric;
    TextView not_positive;
  };
  void cmdSend_Click();
  void KeepCountryCode();
  bool CheckRows();
  bool CheckRow(TextBox& box, const RowMessages& messages);
  bool CheckEmail();
  bool CheckMessage();
  bool PrepareSchedule();
  bool CheckScheduledMoment(Date now, Date& moment);
  SendResult Dispatch();
  [[nodiscard]] SendChoices ReadChoices() const;
  [[nodiscard]] RowChoice ReadRows() const;
  void FocusField(SendField field);

  void Alert(TextView message, TextView title);
  [[nodiscard]] Forms& forms() const { return context_.platform.forms; }

  const AddInContext& context_;
  PreviewState& preview_;
  AccountCommands account_commands_;
  Text filter_;
  bool scheduler_enabled_ = false;
  Text scheduler_title_;
  Text minutes_;
  Text email_column_;
  bool sending_ = false;
  SendOutcome outcome_ = SendOutcome::kNotSent;
  std::vector<Text> TemplateTexts;  // NOLINT(readability-identifier-naming): known by this name
  Text SenderIdList;                // NOLINT(readability-identifier-naming): known by this name
};

}  // namespace quorvel
