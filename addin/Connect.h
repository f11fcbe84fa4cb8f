#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "account/context.h"
#include "addin/common/progress.h"
#include "addin/common/session.h"
#include "gateway/gateway.h"
#include "platform/command_bars.h"
#include "platform/platform.h"
#include "preview/preview_state.h"

namespace quorvel {

// The add-in: what the host creates, connects and commands. Lives as long as the host keeps it loaded; all on
// the host's user-interface thread. No member throws RuntimeError: a command shows what went wrong.
class Connect {
 public:
  // The host's platform outlives the add-in.
  explicit Connect(const Platform& platform);
  Connect(const Connect&) = delete;
  Connect& operator=(const Connect&) = delete;

  // Sets the session's defaults and builds the toolbar "SMS" and the menu "&SMS". A host that refuses a call
  // ends it there, quietly; what was made before stays.
  void OnConnection();
  void OnDisconnection() {}

  // The commands of the toolbar and the menu.
  void SendSms();
  void ProxySettings();
  void Login();
  void Logout();
  void Help() {}

  // Commands without a control of their own, for the send form, for macros and for scripts.
  void DeliveryReport();
  void GetBalance();
  void GetModes();

  [[nodiscard]] const Session& session() const { return session_; }
  // Begins a session of that user without the gateway, for hosts that only compose.
  void BeginSession(TextView user) {
    session_.UserName = user;
    session_.LoggedIn = true;
  }

 private:
  struct Button {
    TextView caption;
    bool begins_group;
    void (Connect::*command)();
  };

  void BuildToolbar();
  void BuildMenu();
  void DeleteOldMenu(CommandBar& menu_bar);
  // Runs one command to its end, whatever goes wrong.
  void Run(const std::function<void()>& command);
  [[nodiscard]] bool HasWorkbook() const;
  // Without effect on a button that the host refused to make.
  void SetMenuEnabled(std::size_t place, bool enabled);
  // The controls that follow the login.
  void ShowLoggedIn();

  const Platform& platform_;
  Session session_;
  Progress progress_;
  Gateway gateway_;
  SettingsStore settings_;
  PreviewState preview_;
  AddInContext context_;

  std::unique_ptr<CommandBar> toolbar_;
  std::unique_ptr<BarControl> menu_;
  std::vector<std::unique_ptr<BarControl>> toolbar_buttons_;
  // In the order of the menu from its top.
  std::vector<std::unique_ptr<BarControl>> menu_buttons_;
};

}  // namespace quorvel
