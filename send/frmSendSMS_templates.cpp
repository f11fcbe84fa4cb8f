#include "account/frmLogin.h"
#include "addin/common/alert.h"
#include "gateway/endpoints.h"
#include "platform/runtime_error.h"
#include "send/frmSendSMS.h"
#include "send/hex_text.h"
#include "send/templates.h"

namespace quorvel {

namespace {

constexpr TextView kNameHint = u"Enter Msg Name";
constexpr TextView kTitle = u"SMS";

}  // namespace

void frmSendSMS::WireTemplates() {
  const auto handled = [this](auto handler) { return [this, handler] { RunHandler(forms(), handler); }; };
  for (Control* hidden : {static_cast<Control*>(&btn_DeleteMsg), static_cast<Control*>(&txt_MsgName),
                          static_cast<Control*>(&SaveMsgText)}) {
    hidden->set_visible(false);
  }
  txtMsg_RTB.on_change = [this] { txtMsg_TemplateBox.set_text(txtMsg_RTB.text()); };
  btn_addTemplateToMsgBox.on_click = [this] { txtMsg_RTB.set_text(txtMsg_TemplateBox.text()); };
  btn_getTemplates.on_click = handled([this] { btn_getTemplates_Click(); });
  cmd_GetSenderIDs.on_click = handled([this] { btn_getTemplates_Click(); });
  TimerPullSIDnTemplates.on_timer = handled([this] { TimerPullSIDnTemplates_Timer(); });
  combo_display_MsgNames.on_click = [this] { combo_display_MsgNames_Click(); };
  chkBox_SaveMsg.on_click = [this] { chkBox_SaveMsg_Click(); };
  txt_MsgName.on_click = [this] { txt_MsgName_Click(); };
  SaveMsgText.on_click = handled([this] { SaveMsgText_Click(); });
  btn_DeleteMsg.on_click = handled([this] { btn_DeleteMsg_Click(); });
}

void frmSendSMS::LoadTemplates() {
  const Session& session = context_.session;
  if (session.UserName.empty() || session.Password.empty() || combo_display_MsgNames.list_count() > 0) return;
  PullTemplatesAndSenderIds();
  if (combo_display_MsgNames.list_count() == 0) {
    chkBox_SaveMsg.set_value(true);
    btn_getTemplates.set_visible(false);
  }
}

void frmSendSMS::PullTemplatesAndSenderIds() {
  Gateway& gateway = context_.gateway;
  const Text answer = gateway.HttpPostForm(kTemplatesPath, "getMsg=Yes&user=" + gateway.User() + "&passwd=" +
                                                               gateway.PlainPassword() + "&ver=1.3");
  PulledLists lists;
  try {
    lists = ParsePullAnswer(answer, context_.platform.code_page);
  } catch (const RuntimeError&) {
    ShowTemplateError();
  }
  // Texts whose names were deleted go now.
  TemplateTexts.resize(static_cast<std::size_t>(combo_display_MsgNames.list_count()));
  for (const MessageTemplate& pulled : lists.templates) {
    TemplateTexts.push_back(pulled.text);
    combo_display_MsgNames.AddItem(pulled.name);
  }
  for (const Text& id : lists.sender_ids) {
    Combo_SenderID.AddItem(id);
    SenderIdList += u"," + id;
  }
  if (!lists.sender_ids.empty()) {
    for (Control* control : {static_cast<Control*>(&Combo_SenderID), static_cast<Control*>(&Label10),
                             static_cast<Control*>(&senderID_Frame)}) {
      control->set_visible(true);
    }
  }
  btn_getTemplates.set_visible(false);
  cmd_GetSenderIDs.set_visible(false);
}

void frmSendSMS::ShowTemplateError() {
  ShowAlert(forms(), kGeneralError, kCritical, kErrorTitle);
}

void frmSendSMS::btn_getTemplates_Click() {
  if (!EnsureLoggedIn(context_)) return;
  if (combo_display_MsgNames.list_count() == 0) PullTemplatesAndSenderIds();
}

void frmSendSMS::TimerPullSIDnTemplates_Timer() {
  TimerPullSIDnTemplates.set_interval(0);
  TimerPullSIDnTemplates.set_enabled(false);
  if (!context_.session.LoggedIn) btn_getTemplates_Click();
}

void frmSendSMS::combo_display_MsgNames_Click() {
  const auto index = static_cast<std::size_t>(combo_display_MsgNames.list_index());
  if (index >= TemplateTexts.size()) {
    ShowTemplateError();
    return;
  }
  txtMsg_RTB.set_text(TemplateTexts[index]);
  btn_DeleteMsg.set_visible(true);
}

void frmSendSMS::chkBox_SaveMsg_Click() {
  const bool save = chkBox_SaveMsg.value();
  txt_MsgName.set_visible(save);
  SaveMsgText.set_visible(save);
  SaveMsgText.set_enabled(save);
  if (save) {
    txt_MsgName.set_text(kNameHint);
    btn_getTemplates.set_visible(false);
    btn_DeleteMsg.set_visible(false);
  } else if (combo_display_MsgNames.list_count() == 0) {
    btn_getTemplates.set_visible(true);
    SaveMsgText.set_visible(true);
  }
}

void frmSendSMS::txt_MsgName_Click() {
  if (txt_MsgName.text() == kNameHint) txt_MsgName.set_text(u"");
}

// Logs in when there are no credentials.
bool frmSendSMS::LoginForTemplates() {
  const Session& session = context_.session;
  if (session.UserName.empty() || session.Password.empty()) {
    frmLogin login(context_);
    forms().ShowModal(login);
  }
  return session.LoggedIn;
}

void frmSendSMS::SaveMsgText_Click() {
  if (txtMsg_RTB.text().empty()) {
    Alert(u"There is no SMS message found!!!", kTitle);
    return;
  }
  const Text name = txt_MsgName.text();
  if (name == kNameHint || name.empty()) {
    Alert(u"Please Provide Msg Name!!!", kTitle);
    txt_MsgName.SetFocus();
    return;
  }
  if (!LoginForTemplates()) return;

  Gateway& gateway = context_.gateway;
  const bool unicode = IsUnicode(forms(), txtMsg_RTB.text());
  std::string body = "SaveMsg=" + gateway.UrlEncode(unicode ? conStringToHex(txtMsg_TemplateBox.text())
                                                            : txtMsg_TemplateBox.text());
  if (unicode) body += "&isUnicode=1";
  body += "&MsgName=" + gateway.UrlEncode(unicode ? conStringToHex(name) : name);
  body += "&user=" + gateway.User() + "&passwd=" + gateway.PlainPassword() + "&ver=1.0";
  Alert(gateway.HttpPostForm(kTemplatesPath, body), kTitle);

  // The new entry is usable at once, whatever the gateway answered.
  txt_MsgName.set_visible(false);
  SaveMsgText.set_visible(false);
  const auto count = static_cast<std::size_t>(combo_display_MsgNames.list_count());
  TemplateTexts.resize(count + 1);
  TemplateTexts[count] = txtMsg_RTB.text();
  combo_display_MsgNames.AddItem(name);
}

void frmSendSMS::btn_DeleteMsg_Click() {
  const Text name = combo_display_MsgNames.text();
  if (name.empty()) {
    Alert(u"Please Select Message Name!!!", u"S M S");
    return;
  }
  if (forms().MsgBox(u"Do You Really Want To Delete '" + name + u"'", kYesNo | kCritical, kTitle) !=
      Answer::kYes) {
    return;
  }
  if (!LoginForTemplates()) return;

  Gateway& gateway = context_.gateway;
  const Text answer = gateway.HttpPostForm(
      kTemplatesPath, "MsgName=" + gateway.UrlEncode(name) + "&delete=Y&user=" + gateway.User() +
                          "&passwd=" + gateway.PlainPassword() + "&ver=1.0");
  // Only the name goes: the texts stay where they are until the lists are pulled again.
  if (answer == u"Successfully Deleted!!!")
    combo_display_MsgNames.RemoveItem(combo_display_MsgNames.list_index());
  Alert(answer, kTitle);
}

}  // namespace quorvel
