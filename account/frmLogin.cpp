#include "account/frmLogin.h"

#include <array>

#include "account/frmProxySettings.h"
#include "account/gateway_host.h"
#include "addin/common/alert.h"
#include "gateway/endpoints.h"
#include "gateway/replies.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u"S M S";
constexpr TextView kLoggedIn = u"Logged in successfully";
constexpr TextView kValidMarker = u"[Success]";
constexpr TextView kInvalidMarker = u"[Invalid]";
constexpr std::int16_t kGatewayPort = 80;
constexpr std::size_t kShortestHost = 4;

constexpr std::array kLoginMessages = {
    CodeMessage{kSuccessCode, kLoggedIn},
    CodeMessage{kNoCreditCode, kNoBalance},
    CodeMessage{kUnknownUserCode, kInvalidUserName},
    CodeMessage{kWrongPasswordCode, kInvalidPassword},
    CodeMessage{kLoginBlockedCode, kAccountBlocked},
    CodeMessage{kErrorCode, u"Error occured while Logging to your account"},
};

bool Contains(TextView text, TextView part) {
  return text.find(part) != TextView::npos;
}

}  // namespace

frmLogin::frmLogin(const AddInContext& context)
    : Form("frmLogin", u"SMS - Login", 206, 104), context_(context) {
  cmdLogin.on_click = [this] { RunHandler(context_.platform.forms, [this] { cmdLogin_Click(); }); };
  cmdCancel.on_click = [this] { Unload(); };
}

void frmLogin::Form_Load() {
  txtUserName.set_text(context_.settings.Read(kClientUserNameSetting));
  txtCRN.set_text(context_.settings.Read(kClientCrnSetting));
  (txtCRN.text().empty() ? txtCRN : txtUserName.text().empty() ? txtUserName : txtPasswd).SetFocus();
}

void frmLogin::cmdLogin_Click() {
  while (Attempt() == Next::kAgain) {
  }
}

frmLogin::Next frmLogin::Attempt() {
  if (!CheckFields()) return Next::kDone;
  context_.session.ServerPort = kGatewayPort;
  if (!FindServer()) return Next::kDone;
  const Text message = Interpret(RequestLogin());
  if (message.empty()) return AskForProxy();
  const bool logged_in = context_.session.LoggedIn;
  ShowAlert(context_.platform.forms, message, logged_in ? kInformation : kWarning, kTitle);
  if (logged_in) Unload();
  return Next::kDone;
}

bool frmLogin::CheckFields() {
  struct Field {
    TextBox& box;
    TextView message;
  };
  const std::array fields = {Field{txtUserName, u"Please enter user name"},
                             Field{txtPasswd, u"Please enter password"},
                             Field{txtCRN, u"Please enter your CRN (Customer Relationship Number)"}};
  for (const Field& field : fields) {
    if (!Trim(field.box.text()).empty()) continue;
    field.box.set_text(u"");
    field.box.SetFocus();
    ShowAlert(context_.platform.forms, field.message, kWarning, kTitle);
    return false;
  }
  return true;
}

bool frmLogin::FindServer() {
  const Text stored_host = context_.settings.Read(kServerUrlSetting);
  const Text stored_crn = context_.settings.Read(kClientCrnSetting);
  const bool known = Trim(stored_host).size() >= kShortestHost && Trim(txtCRN.text()) == Trim(stored_crn);
  if (!known) return ValidateCrn();
  context_.session.ServerHost = stored_host;
  return true;
}

bool frmLogin::ValidateCrn() {
  Forms& forms = context_.platform.forms;
  context_.session.ServerHost = kDefaultGatewayHost;
  Text reply;
  {
    const BusyPointer busy(forms);
    reply = context_.gateway.HttpPostForm(kValidateCrnPath, "CRN=" + context_.gateway.Bytes(txtCRN.text()));
  }
  if (Contains(reply, kValidMarker)) {
    context_.session.ServerHost = Replace(reply, kValidMarker, u"");
    return true;
  }
  if (Contains(reply, kInvalidMarker)) {
    ShowAlert(forms, u"Invalid CRN Number.", kWarning, u"CRN Validation Failed");
    txtCRN.SetFocus();
  } else if (!reply.empty()) {
    ShowAlert(forms, u"Unable to process. Please try again.", kWarning, u"CRN Validation");
  } else {
    forms.MsgBox(u"No Response. Please check your internet connection and proxy settings.",
                 kOkOnly | kInformation, u"Unable To Connect.");
  }
  return false;
}

Text frmLogin::RequestLogin() {
  const std::string body = "user=" + context_.gateway.UrlEncode(Trim(txtUserName.text())) +
                           "&passwd=" + context_.gateway.UrlEncode(Trim(txtPasswd.text()));
  const BusyPointer busy(context_.platform.forms);
  Text reply = context_.gateway.HttpPostForm(kLoginPath, body);
  ForgetCredentials(context_.session);
  return reply;
}

Text frmLogin::Interpret(TextView reply) {
  if (reply == kSuccessCode) {
    RememberAccount();
  } else if (reply == kUnknownUserCode) {
    txtUserName.SetFocus();
    txtUserName.SelectAll();
  } else if (reply == kWrongPasswordCode) {
    txtPasswd.SetFocus();
    txtPasswd.SelectAll();
  }
  return Text(FindMessage(kLoginMessages, reply).value_or(u""));
}

void frmLogin::RememberAccount() {
  Session& session = context_.session;
  session.UserName = Trim(txtUserName.text());
  session.Password = Trim(txtPasswd.text());
  context_.settings.Write(kClientUserNameSetting, session.UserName);
  context_.settings.Write(kClientCrnSetting, txtCRN.text());
  context_.settings.Write(kServerUrlSetting, session.ServerHost);
  session.LoggedIn = true;
}

frmLogin::Next frmLogin::AskForProxy() {
  Text question(kNoResponse);
  question += kCrLf;
  question += kCheckConnection;
  question += kCrLf;
  question += u"Do You Want To Edit Proxy Settings?";
  if (context_.platform.forms.MsgBox(question, kYesNo, kTitle) != Answer::kYes) return Next::kDone;
  frmProxySettings proxy_settings(context_);
  context_.platform.forms.ShowModal(proxy_settings);
  return Next::kAgain;
}

bool EnsureLoggedIn(const AddInContext& context) {
  if (!context.session.LoggedIn) {
    frmLogin login(context);
    context.platform.forms.ShowModal(login);
  }
  return context.session.LoggedIn;
}

void ForgetCredentials(Session& session) {
  session.UserName.clear();
  session.Password.clear();
  session.LoggedIn = false;
}

}  // namespace quorvel
