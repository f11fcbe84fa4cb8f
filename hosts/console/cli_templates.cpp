#include "hosts/console/commands.h"
#include "hosts/console/message_text.h"
#include "hosts/console/user.h"
#include "send/frmSendSMS.h"

namespace quorvel {

namespace {

// How the gateway's answer to a save or a deletion begins when it did what was asked.
constexpr TextView kDone = u"Successfully";

// Opens the send form over an empty workbook and plays `script`, which says whether it did what was asked.
ExitStatus OnSendForm(ConsoleHost& host, const std::function<bool(frmSendSMS&)>& script) {
  host.application().OpenWorkbook();
  bool done = false;
  host.forms().On<frmSendSMS>([&](frmSendSMS& form) {
    done = script(form);
    Press(form.cmdClose);
  });
  host.connect().SendSms();
  return host.StatusOf(done);
}

// Gets templates and sender IDs from the gateway.
bool Pull(ConsoleHost& host, frmSendSMS& form) {
  Press(form.btn_getTemplates);
  return host.connect().session().LoggedIn && host.GatewayAnswered();
}

void PrintTemplates(const frmSendSMS& form, Output& output) {
  nlohmann::json& templates = output.result()["templates"] = nlohmann::json::array();
  const std::vector<Text>& names = form.combo_display_MsgNames.items();
  for (std::size_t i = 0; i < names.size() && i < form.template_texts().size(); ++i) {
    const std::string name = ToUtf8(names[i]);
    const std::string text = ToUtf8(form.template_texts()[i]);
    output.Print({name, ": ", text, "\n"});
    templates.push_back({{"name", name}, {"text", text}});
  }
}

bool Save(ConsoleHost& host, frmSendSMS& form, const Text& name, const Text& message) {
  Type(form.txtMsg_RTB, message);
  Tick(form.chkBox_SaveMsg);
  form.txt_MsgName.UserClick();
  Type(form.txt_MsgName, name);
  Press(form.SaveMsgText);
  return host.output().LastMessage().starts_with(kDone);
}

bool Delete(ConsoleHost& host, frmSendSMS& form, const Text& name) {
  if (!Pull(host, form)) return false;
  Pick(form.combo_display_MsgNames, name, "templates delete");
  Press(form.btn_DeleteMsg);
  return host.output().LastMessage().starts_with(kDone);
}

}  // namespace

ExitStatus RunTemplates(ConsoleHost& host, const TemplatesOptions& options) {
  using Action = TemplatesOptions::Action;
  const Text name = FromUtf8(options.name);
  Text message;
  if (options.action == Action::kSave) {
    const MessageText given = ReadMessage(options.message);
    message = given.is_template ? u"@" + given.text : given.text;
  }
  return OnSendForm(host, [&](frmSendSMS& form) {
    if (options.action == Action::kSave) return Save(host, form, name, message);
    if (options.action == Action::kDelete) return Delete(host, form, name);
    const bool pulled = Pull(host, form);
    if (pulled) PrintTemplates(form, host.output());
    return pulled;
  });
}

ExitStatus RunSenders(ConsoleHost& host) {
  return OnSendForm(host, [&](frmSendSMS& form) {
    if (!Pull(host, form)) return false;
    nlohmann::json& senders = host.output().result()["senders"] = nlohmann::json::array();
    for (const Text& id : form.Combo_SenderID.items()) {
      host.output().Print({ToUtf8(id), "\n"});
      senders.push_back(ToUtf8(id));
    }
    return true;
  });
}

}  // namespace quorvel
