#include <algorithm>
#include <array>

#include "account/frmProxySettings.h"
#include "hosts/console/commands.h"
#include "hosts/console/user.h"

namespace quorvel {

namespace {

struct ProxyTypeName {
  std::int16_t type;
  int place;  // in the form's list
  const char* name;
};

constexpr std::array kProxyTypes = {ProxyTypeName{0, 0, "registry"}, ProxyTypeName{1, 1, "direct"},
                                    ProxyTypeName{3, 2, "named"}};

bool Fill(frmProxySettings& form, const ProxyOptions& options, const Environment& environment) {
  const auto type = std::find_if(kProxyTypes.begin(), kProxyTypes.end(),
                                 [&](const ProxyTypeName& known) { return known.name == *options.type; });
  form.cboProxyType.UserSelect(type->place);
  Type(form.txtHostName, FromUtf8(options.host));
  Type(form.txtPort, FromUtf8(options.port));
  Type(form.txtUserName, FromUtf8(options.user));
  Type(form.txtPassword, FromUtf8(environment.proxy_password.value_or("")));
  Press(form.cmdOk);
  return !form.loaded();
}

void PrintProxy(const Session& session, Output& output) {
  const auto type = std::find_if(kProxyTypes.begin(), kProxyTypes.end(),
                                 [&](const ProxyTypeName& known) { return known.type == session.ProxyType; });
  const std::string name = type == kProxyTypes.end() ? std::to_string(session.ProxyType) : type->name;
  output.Print({"type: ", name, "\n"});
  output.result()["type"] = name;
  if (session.ProxyName.empty()) return;
  output.Print({"host: ", ToUtf8(session.ProxyName), "\nport: ", std::to_string(session.ProxyPort), "\n"});
  output.result()["host"] = ToUtf8(session.ProxyName);
  output.result()["port"] = session.ProxyPort;
  if (session.ProxyUserName.empty()) return;
  output.Print({"user: ", ToUtf8(session.ProxyUserName), "\n"});
  output.result()["user"] = ToUtf8(session.ProxyUserName);
}

}  // namespace

ExitStatus RunProxy(ConsoleHost& host, const ProxyOptions& options) {
  bool done = true;
  if (options.type) {
    host.forms().On<frmProxySettings>([&](frmProxySettings& form) {
      done = Fill(form, options, host.environment());
      if (form.loaded()) Press(form.cmdCancel);
    });
    host.connect().ProxySettings();
  }
  PrintProxy(host.connect().session(), host.output());
  return host.StatusOf(done);
}

}  // namespace quorvel
