#include "addin/Connect.h"

#include <array>

#include "account/account_queries.h"
#include "account/frmLogin.h"
#include "account/frmProxySettings.h"
#include "addin/common/alert.h"
#include "addin/faces.h"
#include "platform/runtime_error.h"
#include "reports/frmDR.h"
#include "send/frmSendSMS.h"

namespace quorvel {

namespace {

constexpr TextView kToolbarName = u"SMS";
constexpr TextView kMenuCaption = u"&SMS";
constexpr TextView kNoWorkbook = u"Work book does not exit. Please check";
constexpr TextView kPlaceholderHost = u"192.168.0.1";
constexpr std::int16_t kPlaceholderPort = 88;
constexpr int kBlankFace = 1;

// Places in the menu, from its top.
constexpr std::size_t kLoginPlace = 0;
constexpr std::size_t kLogoutPlace = 4;

}  // namespace

Connect::Connect(const Platform& platform)
    : platform_(platform),
      progress_(platform.forms, platform.clock),
      gateway_(platform, session_, progress_),
      settings_(platform.settings),
      context_{platform_, session_, progress_, gateway_, settings_} {}

void Connect::OnConnection() {
  try {
    session_.ServerHost = kPlaceholderHost;
    session_.ServerPort = kPlaceholderPort;
    GetProxySettings(settings_, session_);
    session_.ServerBaseUrl = u"http://" + session_.ServerHost;
    SeedModes(settings_);
    BuildToolbar();
    BuildMenu();
  } catch (const RuntimeError&) {  // the rest of the set-up is given up without a message
  }
}

void Connect::BuildToolbar() {
  struct ToolbarButton {
    TextView caption;
    Face (*face)();
    void (Connect::*command)();
  };
  const std::array buttons = {ToolbarButton{u"Send SMS", SendFace, &Connect::SendSms},
                              ToolbarButton{u"Proxy Settings", ProxyFace, &Connect::ProxySettings},
                              ToolbarButton{u"Help", HelpFace, &Connect::Help}};
  toolbar_ = platform_.application.Bars().Add(kToolbarName);
  for (const ToolbarButton& button : buttons) {
    std::unique_ptr<BarControl> control = toolbar_->Controls().Add({BarControlType::kButton, 0});
    control->SetFaceId(kBlankFace);
    control->PasteFace(button.face());
    control->SetStyle(kIconAndCaption);
    control->SetCaption(button.caption);
    control->SetVisible(true);
    control->OnClick([this, command = button.command] { (this->*command)(); });
    toolbar_buttons_.push_back(std::move(control));
  }
  toolbar_->SetVisible(true);
}

void Connect::DeleteOldMenu(CommandBar& menu_bar) {
  const std::unique_ptr<BarControl> popup = menu_bar.FindControl(BarControlType::kPopup);
  if (popup && popup->Caption() == kMenuCaption) popup->Delete();
}

void Connect::BuildMenu() {
  // From the top.
  const std::array buttons = {
      Button{u"Login", false, &Connect::Login}, Button{u"Send SMS", true, &Connect::SendSms},
      Button{u"Proxy Settings", false, &Connect::ProxySettings}, Button{u"Help", true, &Connect::Help},
      Button{u"Logout", true, &Connect::Logout}};
  const std::unique_ptr<CommandBar> menu_bar = platform_.application.Bars().MenuBar();
  DeleteOldMenu(*menu_bar);
  menu_ = menu_bar->Controls().Add({BarControlType::kPopup, menu_bar->Controls().Count()});
  menu_->SetCaption(kMenuCaption);
  menu_->SetVisible(true);

  menu_buttons_.resize(buttons.size());
  for (std::size_t place = buttons.size(); place-- > 0;) {
    const Button& button = buttons[place];
    std::unique_ptr<BarControl> control = menu_->Children().Add({BarControlType::kButton, 1});
    control->SetCaption(button.caption);
    control->SetEnabled(true);
    control->SetStyle(kIconAndCaption);
    control->SetBeginGroup(button.begins_group);
    control->OnClick([this, command = button.command] { (this->*command)(); });
    menu_buttons_[place] = std::move(control);
  }
}

void Connect::Run(const std::function<void()>& command) {
  RunHandler(platform_.forms, command);
  if (session_.LoggedIn) RunHandler(platform_.forms, [this] { ShowLoggedIn(); });
}

void Connect::SetMenuEnabled(std::size_t place, bool enabled) {
  if (place < menu_buttons_.size() && menu_buttons_[place]) menu_buttons_[place]->SetEnabled(enabled);
}

void Connect::ShowLoggedIn() {
  for (std::size_t place = 0; place < menu_buttons_.size(); ++place) {
    SetMenuEnabled(place, place != kLoginPlace);
  }
}

bool Connect::HasWorkbook() const {
  return platform_.application.ActiveWorkbook() != nullptr;
}

void Connect::SendSms() {
  Run([this] {
    if (!HasWorkbook()) {
      platform_.forms.MsgBox(kNoWorkbook, kOkOnly | kCritical, u" S M S ");
      return;
    }
    frmSendSMS form(context_, preview_,
                    {[this] { GetBalance(); }, [this] { GetModes(); }, [this] { DeliveryReport(); }});
    platform_.forms.ShowModal(form);
  });
}

void Connect::ProxySettings() {
  Run([this] {
    frmProxySettings form(context_);
    platform_.forms.ShowModal(form);
  });
}

void Connect::Login() {
  Run([this] {
    frmLogin form(context_);
    platform_.forms.ShowModal(form);
  });
}

void Connect::Logout() {
  Run([this] {
    ForgetCredentials(session_);
    SetMenuEnabled(kLoginPlace, true);
    SetMenuEnabled(kLogoutPlace, false);
    ShowAlert(platform_.forms, u"Logged out successfully", kInformation, u"S M S");
  });
}

void Connect::DeliveryReport() {
  Run([this] {
    if (!HasWorkbook()) {
      ShowAlert(platform_.forms, kNoWorkbook, kCritical, u" S M S ");
      return;
    }
    frmDR form(context_);
    platform_.forms.ShowModal(form);
  });
}

void Connect::GetBalance() {
  Run([this] {
    if (!EnsureLoggedIn(context_)) return;
    ShowLoggedIn();
    quorvel::GetBalance(context_);
  });
}

void Connect::GetModes() {
  Run([this] { quorvel::GetModes(context_); });
}

}  // namespace quorvel
