#include "send/frmSendSMS.h"

#include <array>
#include <utility>

#include "addin/common/alert.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr int kLongestNationalNumber = 15;  // E.164

}  // namespace

frmSendSMS::frmSendSMS(const AddInContext& context, PreviewState& preview, AccountCommands account_commands)
    : Form("frmSendSMS", u"Send SMS", 452, 304),
      context_(context),
      preview_(preview),
      account_commands_(std::move(account_commands)) {
  cmdSend.on_click = [this] { RunHandler(forms(), [this] { cmdSend_Click(); }); };
  cmdClose.on_click = [this] { Unload(); };
  cmdBalance.on_click = [this] { account_commands_.balance(); };
  cmdModes.on_click = [this] { account_commands_.modes(); };
  cmdReports.on_click = [this] { account_commands_.reports(); };
  WirePanels();
  WireOptions();
  WireDates();
  WireTemplates();
}

void frmSendSMS::WirePanels() {
  const std::array<std::pair<Button*, Frame*>, 6> panels = {{{&cmdEmailPanel, &Frame_Email},
                                                             {&cmdSearchPanel, &Frame_Search},
                                                             {&cmdSettingsPanel, &Frame_Settings},
                                                             {&cmdSchedulerPanel, &frame_Scheduler_Details},
                                                             {&cmdTemplatesPanel, &Frame_Templates},
                                                             {&cmdAccountPanel, &Frame_Account}}};
  for (const auto& [button, panel] : panels) {
    button->on_click = [this, shown = panel] { ShowPanel(*shown); };
  }
  ShowPanel(Frame_Templates);
}

void frmSendSMS::ShowPanel(Frame& panel) {
  for (Frame* other : {&Frame_Email, &Frame_Search, &Frame_Settings, &frame_Scheduler_Details,
                       &Frame_Templates, &Frame_Account}) {
    other->set_visible(other == &panel);
  }
}

void frmSendSMS::WireOptions() {
  const auto handled = [this](auto handler) { return [this, handler] { RunHandler(forms(), handler); }; };
  cmbMobileNumbersCell.on_click = handled([this] { cmbMobileNumbersCell_Click(); });
  cmdFilter.on_click = handled([this] { cmdFilter_Click(); });
  Check_RemoveDuplicates.on_click = handled(
      [this] { context_.settings.WriteFlag(kRemoveDuplicatesSetting, Check_RemoveDuplicates.value()); });
  Chk_FastProcessing.on_click = handled([this] { Chk_FastProcessing_Click(); });
  txt_FromEmailID.on_change =
      handled([this] { context_.settings.Write(kFromEmailIdSetting, txt_FromEmailID.text()); });
  txt_FromEmailPwd.on_change =
      handled([this] { context_.settings.Write(kFromEmailPwdSetting, txt_FromEmailPwd.text()); });
  txt_header.on_change = handled([this] { context_.settings.Write(kHeaderSetting, txt_header.text()); });
  txt_footer.on_change = handled([this] { context_.settings.Write(kFooterSetting, txt_footer.text()); });
  for (CheckBox* service : {&ChkBox_EnglishSMS, &ChkBox_LanguageSMS, &chkFlash, &ChkBox_WAPPush}) {
    service->on_click = [this, service] { ChooseService(*service); };
  }
  for (CheckBox* option : {&Chk_SendEmail, &chkAdvance}) {
    option->on_click = [this] { UpdateEnabled(); };
  }
  chkSetScheduler.on_click = [this] {
    scheduler_enabled_ = chkSetScheduler.value();
    UpdateEnabled();
  };
}

void frmSendSMS::Form_Load() {
  optAllRows.set_value(true);
  senderID_Frame.set_visible(false);
  RunHandler(forms(), [this] { FillColumnPickers(); });
  RunHandler(forms(), [this] { FillCountryCode(); });
  LoadOptions();
  FillDates();
  ShowFilter();
  UpdateEnabled();
  cmbMobileNumbersCell.SetFocus();
  RunHandler(forms(), [this] { LoadTemplates(); });
}

void frmSendSMS::FillColumnPickers() {
  const Text nothing = u"Select";
  for (ComboBox* picker : {&Combo_EmailColumn, &cmbSchedulerDateTime}) {
    picker->AddItem(nothing);
    picker->set_list_index(0);
  }
  const std::unique_ptr<Workbook> workbook = context_.platform.application.ActiveWorkbook();
  if (!workbook) return;
  const std::int32_t columns = workbook->ActiveSheet()->UsedColumns();
  for (std::int32_t column = 1; column <= columns; ++column) {
    const Text letters = ColumnLetters(column);
    for (ComboBox* picker : {&cmbMobileNumbersCell, &Combo_EmailColumn, &cmbSchedulerDateTime}) {
      picker->AddItem(letters);
    }
  }
}

// The list's first entry chooses no length, so that an entry's index is the length it chooses.
void frmSendSMS::FillCountryCode() {
  ComboCountryCodeLength.AddItem(u"-");
  for (int length = 1; length <= kLongestNationalNumber; ++length) {
    ComboCountryCodeLength.AddItem(NumberToText(std::int32_t{length}));
  }
  ComboCountryCodeLength.set_list_index(0);
  txtCountryCode.set_text(context_.settings.Read(kCountryCodeSetting));
  const Text length = context_.settings.Read(kCountryLengthSetting);
  if (!IsNumeric(TextView(length))) return;
  const std::int16_t index = ToInteger(length);
  if (index >= 0 && index <= kLongestNationalNumber) ComboCountryCodeLength.set_list_index(index);
}

void frmSendSMS::LoadOptions() {
  const SettingsStore& settings = context_.settings;
  Check_RemoveDuplicates.set_value(settings.ReadFlag(kRemoveDuplicatesSetting));
  const Text from = settings.Read(kFromEmailIdSetting);
  const Text password = settings.Read(kFromEmailPwdSetting);
  Chk_FastProcessing.set_value(settings.ReadFlag(kFastProcessingSetting));
  if (Chk_FastProcessing.value()) {
    txt_FromEmailID.set_text(from);
    txt_FromEmailPwd.set_text(password);
  }
  txt_header.set_text(settings.Read(kHeaderSetting));
  txt_footer.set_text(settings.Read(kFooterSetting));
}

void frmSendSMS::UpdateEnabled() {
  const auto enable = [](bool enabled, std::initializer_list<Control*> controls) {
    for (Control* control : controls) control->set_enabled(enabled);
  };
  enable(Chk_SendEmail.value(),
         {&lblEmailSubject, &txtEmailSubject, &lblEmailColumn, &Combo_EmailColumn, &Chk_FastProcessing});
  enable(Chk_SendEmail.value() && Chk_FastProcessing.value(),
         {&lblFromEmailID, &txt_FromEmailID, &lblFromEmailPwd, &txt_FromEmailPwd});
  enable(chkAdvance.value(), {&lblHeader, &txt_header, &lblFooter, &txt_footer});
  enable(chkSetScheduler.value(),
         {&lblSchedulerName, &txt_SchedulerName, &lblSchedulerDate, &combo_month, &combo_dd, &combo_year,
          &lblSchedulerTime, &combo_Times, &lblSchedulerDateTime, &cmbSchedulerDateTime, &chkNotifyMe});
  enable(ChkBox_WAPPush.value(), {&txtWAP_URL});
}

// A message is of one service only.
void frmSendSMS::ChooseService(CheckBox& chosen) {
  if (chosen.value()) {
    for (CheckBox* other : {&ChkBox_EnglishSMS, &ChkBox_LanguageSMS, &chkFlash, &ChkBox_WAPPush}) {
      if (other != &chosen) other->set_value(false);
    }
  }
  UpdateEnabled();
}

void frmSendSMS::Chk_FastProcessing_Click() {
  context_.settings.WriteFlag(kFastProcessingSetting, Chk_FastProcessing.value());
  if (!Chk_FastProcessing.value()) {
    txt_FromEmailID.set_text(u"");
    txt_FromEmailPwd.set_text(u"");
  }
  UpdateEnabled();
}

void frmSendSMS::cmbMobileNumbersCell_Click() {
  const std::int32_t column = ColumnNumber(cmbMobileNumbersCell.text());
  const std::unique_ptr<Workbook> workbook = context_.platform.application.ActiveWorkbook();
  if (column > 0 && workbook) workbook->ActiveSheet()->SelectColumn(column);
}

void frmSendSMS::cmdFilter_Click() {
  constexpr std::array<TextView, 4> kPrompt = {
      u"Enter Filter Formula.", u"Ex: #B# like 'Bas%' ",
      u"(All the specified rows of column B which starts with Bas will receive SMS.)",
      u"Note: Date Format is 'MM/DD/YYYY' Ex:-#B#>'12/28/2009'"};
  Text prompt;
  for (const TextView line : kPrompt) {
    if (!prompt.empty()) prompt.push_back(u'\n');
    prompt += line;
  }
  filter_ = forms().InputBox(prompt, u"SMS", filter_);
  ShowFilter();
}

void frmSendSMS::ShowFilter() {
  lblFilter.set_caption(filter_.empty() ? Text(u"No filter is set: every chosen row is sent.")
                                        : u"Filter: " + Replace(filter_, u"&", u"&&"));
}

void frmSendSMS::Alert(TextView message, TextView title) {
  ShowAlert(forms(), message, kInformation, title);
}

}  // namespace quorvel
