#include "account/frmProxySettings.h"

#include "addin/common/alert.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u"S M S";
constexpr int kNamedProxyIndex = 2;
constexpr std::int16_t kNamedProxy = 3;

}  // namespace

frmProxySettings::frmProxySettings(const AddInContext& context)
    : Form("frmProxySettings", u"SMS - Proxy Settings", 236, 148), context_(context) {
  cmdOk.on_click = [this] { RunHandler(context_.platform.forms, [this] { cmdOk_Click(); }); };
  cmdCancel.on_click = [this] { Unload(); };
}

void frmProxySettings::Form_Load() {
  cboProxyType.AddItem(u"Proxy config from registry");
  cboProxyType.AddItem(u"Directly connect to the Internet");
  cboProxyType.AddItem(u"Use proxy list");
  const Session& session = context_.session;
  if (session.ProxyType >= 0 && session.ProxyType < kNamedProxyIndex) {
    cboProxyType.set_list_index(session.ProxyType);
  } else if (session.ProxyType == kNamedProxy) {
    cboProxyType.set_list_index(kNamedProxyIndex);
  }
  txtHostName.set_text(session.ProxyName);
  if (session.ProxyPort != 0) txtPort.set_text(NumberToText(std::int32_t{session.ProxyPort}));
  txtUserName.set_text(session.ProxyUserName);
  txtPassword.set_text(session.ProxyUserPWD);
}

bool frmProxySettings::CheckProxy() {
  if (Trim(txtHostName.text()).empty()) {
    ShowAlert(context_.platform.forms, u"Invalid Proxy Name/Address", kWarning, kTitle);
    txtHostName.SetFocus();
    return false;
  }
  if (Val(txtPort.text()) == 0) {
    ShowAlert(context_.platform.forms, u"Invalid Proxy Port", kWarning, kTitle);
    txtPort.SetFocus();
    return false;
  }
  return true;
}

void frmProxySettings::cmdOk_Click() {
  const int index = cboProxyType.list_index();
  const bool named = index == kNamedProxyIndex;
  if (named && !CheckProxy()) return;
  const BusyPointer busy(context_.platform.forms);
  Session& session = context_.session;
  if (named) {
    const std::int16_t port = ToInteger(Val(txtPort.text()));  // before anything changes: it may not fit
    session.ProxyType = kNamedProxy;
    session.ProxyName = Trim(txtHostName.text());
    session.ProxyPort = port;
    session.ProxyUserName = Trim(txtUserName.text());
    session.ProxyUserPWD = Trim(txtPassword.text());
  } else if (index >= 0) {
    session.ProxyType = static_cast<std::int16_t>(index);
    session.ProxyName.clear();
    session.ProxyPort = 0;
    session.ProxyUserName.clear();
    session.ProxyUserPWD.clear();
  }
  SaveProxySettings(session, context_.settings);
  Unload();
}

}  // namespace quorvel
