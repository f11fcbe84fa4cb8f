#include "addin/Connect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "account/frmLogin.h"
#include "account/frmProxySettings.h"
#include "addin/common/AlertBox.h"
#include "tests/support/addin_test.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::array<TextView, 5> kMenuCaptions = {u"Login", u"Send SMS", u"Proxy Settings", u"Help",
                                                   u"Logout"};

std::vector<Text> Captions(const std::vector<std::shared_ptr<MemoryBarControl>>& controls) {
  std::vector<Text> captions;
  captions.reserve(controls.size());
  for (const auto& control : controls) captions.push_back(control->caption);
  return captions;
}

// The controls that were added to a host without any of its own.
std::size_t Made(const MemoryCommandBars& bars) {
  std::size_t made = bars.menu_bar().controls.size();
  for (const auto& toolbar : bars.toolbars()) made += toolbar->controls.size();
  for (const auto& popup : bars.menu_bar().controls) made += popup->children.size();
  return made;
}

// The add-in connected to the fixture's host, and whatever else connects to a host of its own.
class ConnectTest : public AddInTest {
 protected:
  [[nodiscard]] Platform PlatformWith(Application& application) {
    return {application, forms_, internet_, failing_settings_, recordsets_, clock_, Windows1252()};
  }

  // Which of the menu's buttons are enabled, from the top.
  [[nodiscard]] std::vector<bool> Enabled() {
    std::vector<bool> enabled;
    enabled.reserve(kMenuCaptions.size());
    for (const TextView caption : kMenuCaptions) {
      enabled.push_back(application_.bars().Find({u"&SMS", caption})->enabled);
    }
    return enabled;
  }
};

TEST_F(ConnectTest, ConnectionSetsTheDefaultsOfTheSession) {
  const Session& session = connect_.session();
  EXPECT_EQ(session.ServerHost, u"192.168.0.1");
  EXPECT_EQ(session.ServerPort, 88);
  EXPECT_EQ(session.ServerBaseUrl, u"http://192.168.0.1");
  EXPECT_FALSE(session.LoggedIn);
  EXPECT_EQ(session.UserName + session.Password + session.ProxyName, u"");
  EXPECT_EQ(session.ProxyType, 0);
  EXPECT_EQ(session.ProxyPort, 0);
  EXPECT_EQ(settings_.size(), 1U) << "the modes";
}

TEST_F(ConnectTest, BuildsTheToolbar) {
  ASSERT_EQ(application_.bars().toolbars().size(), 1U);
  const MemoryBar& toolbar = *application_.bars().toolbars()[0];
  EXPECT_EQ(toolbar.name, u"SMS");
  EXPECT_TRUE(toolbar.visible);
  EXPECT_THAT(Captions(toolbar.controls), ElementsAre(u"Send SMS", u"Proxy Settings", u"Help"));
  for (const auto& button : toolbar.controls) {
    EXPECT_EQ(button->style, 3);
    EXPECT_EQ(button->face_id, 1);
    EXPECT_TRUE(button->visible);
    ASSERT_TRUE(button->face);
    EXPECT_NE(button->face->pixels, Face{}.pixels);
  }
}

TEST_F(ConnectTest, BuildsTheMenuBeforeTheLastOneOfTheHost) {
  MemoryApplication host({u"&File", u"&Edit", u"&Help"});
  const Platform platform = PlatformWith(host);
  Connect connect(platform);
  connect.OnConnection();
  EXPECT_THAT(Captions(host.bars().menu_bar().controls), ElementsAre(u"&File", u"&Edit", u"&SMS", u"&Help"));
  const MemoryBarControl& menu = *host.bars().Find({u"&SMS"});
  EXPECT_EQ(menu.type, BarControlType::kPopup);
  EXPECT_TRUE(menu.visible);
  EXPECT_THAT(Captions(menu.children), testing::ElementsAreArray(kMenuCaptions));
  std::vector<bool> groups;
  for (const auto& button : menu.children) {
    groups.push_back(button->begin_group);
    EXPECT_EQ(button->style, 3);
    EXPECT_TRUE(button->enabled);
  }
  EXPECT_THAT(groups, ElementsAre(false, true, false, true, true));
}

TEST_F(ConnectTest, OnlyTheFirstPopupIsTakenForAnOldMenu) {
  MemoryApplication old_first({u"&SMS", u"&Help"});
  MemoryApplication old_second({u"&File", u"&SMS", u"&Help"});
  for (MemoryApplication* host : {&old_first, &old_second}) {
    const Platform platform = PlatformWith(*host);
    Connect connect(platform);
    connect.OnConnection();
  }
  EXPECT_THAT(Captions(old_first.bars().menu_bar().controls), ElementsAre(u"&SMS", u"&Help"));
  EXPECT_EQ(old_first.bars().Find({u"&SMS"})->children.size(), 5U);
  EXPECT_THAT(Captions(old_second.bars().menu_bar().controls),
              ElementsAre(u"&File", u"&SMS", u"&SMS", u"&Help"));
}

TEST_F(ConnectTest, ASecondConnectionEndsAtTheToolbarThatIsThere) {
  connect_.OnConnection();
  Connect second(platform_);
  second.OnConnection();
  EXPECT_EQ(Made(application_.bars()), 9U);
  EXPECT_TRUE(application_.bars().Click({u"&SMS", u"Logout"}));
  EXPECT_EQ(NewAlerts().size(), 1U);
}

TEST_F(ConnectTest, AHostThatRefusesACallEndsTheSetUpQuietlyAndKeepsWhatIsMade) {
  struct Row {
    std::string_view operation;
    std::vector<std::size_t> made;  // when the first, second, … call of it is refused
  };
  const std::array rows = {Row{"Settings::Write", {0}},
                           Row{"Application::Bars", {0, 3}},
                           Row{"CommandBars::Add", {0}},
                           Row{"BarControls::Add", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
                           Row{"BarControl::SetFaceId", {1, 2, 3}},
                           Row{"BarControl::PasteFace", {1, 2, 3}},
                           Row{"BarControl::SetStyle", {1, 2, 3, 5, 6, 7, 8, 9}},
                           Row{"BarControl::SetCaption", {1, 2, 3, 4, 5, 6, 7, 8, 9}},
                           Row{"BarControl::SetVisible", {1, 2, 3, 4}},
                           Row{"BarControl::OnClick", {1, 2, 3, 5, 6, 7, 8, 9}},
                           Row{"CommandBar::SetVisible", {3}},
                           Row{"CommandBars::MenuBar", {3}},
                           Row{"CommandBar::FindControl", {3}},
                           Row{"BarControls::Count", {3}},
                           Row{"BarControl::Children", {4, 5, 6, 7, 8}},
                           Row{"BarControl::SetEnabled", {5, 6, 7, 8, 9}},
                           Row{"BarControl::SetBeginGroup", {5, 6, 7, 8, 9}}};
  forms_.On<frmProxySettings>([](frmProxySettings& form) { form.cmdCancel.UserPress(); });
  for (const auto& [operation, made] : rows) {
    for (std::size_t i = 0; i <= made.size(); ++i) {
      MemoryApplication host;
      FailingApplication failing_host(host, faults_);
      const Platform platform = PlatformWith(failing_host);
      settings_.Write({u"Tessaly", u"STARTUP", u"MODES"}, u"");
      Connect connect(platform);
      faults_.Fail(operation, static_cast<int>(i + 1), 1);
      connect.OnConnection();
      faults_.Clear();
      const std::size_t expected = i < made.size() ? made[i] : 9;  // beyond its last call nothing fails
      EXPECT_EQ(Made(host.bars()), expected) << operation << " " << i + 1;
      connect.BeginSession(u"joe");  // the menu follows as far as it is there
      connect.ProxySettings();
      connect.Logout();
      EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u"Logged out successfully", kInformation, u"S M S"}));
    }
  }
  EXPECT_THAT(forms_.questions(), IsEmpty());
}

TEST_F(ConnectTest, EveryButtonRunsTheCommandOfItsCaption) {
  std::vector<std::string> expected;
  forms_.On<frmSendSMS>([](frmSendSMS& form) { form.cmdClose.UserPress(); });
  forms_.On<frmProxySettings>([](frmProxySettings& form) { form.cmdCancel.UserPress(); });
  forms_.On<frmLogin>([](frmLogin& form) { form.cmdCancel.UserPress(); });
  for (const TextView bar : {u"SMS", u"&SMS"}) {
    for (const TextView caption : {u"Help", u"Proxy Settings", u"Send SMS"}) {
      EXPECT_TRUE(application_.bars().Click({bar, caption})) << ToUtf8(caption);
    }
    expected.insert(expected.end(), {"frmProxySettings", "frmSendSMS"});
  }
  EXPECT_TRUE(application_.bars().Click({u"&SMS", u"Login"}));
  EXPECT_TRUE(application_.bars().Click({u"&SMS", u"Logout"}));
  expected.insert(expected.end(), {"frmLogin", "AlertBox"});
  EXPECT_EQ(forms_.shown(), expected);
}

TEST_F(ConnectTest, WithoutAWorkbookNothingIsSentOrReported) {
  application_.CloseWorkbook();
  connect_.SendSms();
  EXPECT_THAT(forms_.questions(), ElementsAre(ScriptedForms::Question{
                                      u"Work book does not exit. Please check", kCritical, u" S M S ", u""}));
  EXPECT_THAT(forms_.shown(), IsEmpty());
  connect_.DeliveryReport();
  EXPECT_THAT(NewAlerts(),
              ElementsAre(Alert{u"Work book does not exit. Please check", kCritical, u" S M S "}));
  EXPECT_THAT(forms_.shown(), ElementsAre("AlertBox"));
}

TEST_F(ConnectTest, TheMenuFollowsLoginAndLogout) {
  EXPECT_THAT(Enabled(), ElementsAre(true, true, true, true, true));
  forms_.On<frmLogin>([](frmLogin& form) { form.cmdCancel.UserPress(); });
  connect_.Login();
  EXPECT_THAT(Enabled(), ElementsAre(true, true, true, true, true));
  LogIn();
  EXPECT_THAT(Enabled(), ElementsAre(false, true, true, true, true));
  EXPECT_FALSE(application_.bars().Click({u"&SMS", u"Login"}));

  const std::size_t kept = settings_.size();
  connect_.Logout();
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u"Logged out successfully", kInformation, u"S M S"}));
  EXPECT_THAT(Enabled(), ElementsAre(true, true, true, true, false));
  EXPECT_FALSE(connect_.session().LoggedIn);
  EXPECT_EQ(connect_.session().UserName + connect_.session().Password, u"");
  EXPECT_EQ(settings_.size(), kept);
  internet_.Answer("000");  // the CRN and its server are known now
  connect_.Login();
  EXPECT_THAT(Enabled(), ElementsAre(false, true, true, true, true));
}

TEST_F(ConnectTest, TheBalanceAsksForALoginFirst) {
  forms_.On<frmLogin>([](frmLogin& form) { form.UserClose(); });
  connect_.GetBalance();
  EXPECT_THAT(forms_.shown(), ElementsAre("frmLogin"));
  EXPECT_THAT(NewRequests(), IsEmpty());

  forms_.On<frmLogin>([](frmLogin& form) {
    form.txtUserName.UserType(u"joe");
    form.txtPasswd.UserType(u"pw");
    form.txtCRN.UserType(u"C1");
    form.cmdLogin.UserPress();
  });
  internet_.Answer("[Success]h1.example");
  internet_.Answer("000");
  internet_.Answer("<SMS>7</SMS>");
  std::vector<bool> login_enabled;
  forms_.On<AlertBox>([&](AlertBox& box) {
    login_enabled.push_back(Enabled()[0]);
    box.btnOk.UserPress();
  });
  connect_.GetBalance();
  EXPECT_THAT(login_enabled, ElementsAre(true, false)) << "at the login's alert and at the balance";
}

TEST_F(ConnectTest, AHostThatFailsInACommandIsReportedAndTheAddInStaysUsable) {
  const auto fails = [&](std::string_view operation, void (Connect::*command)()) {
    faults_.Fail(operation, 1, 1, RuntimeError(1004, u"The host is busy."));
    (connect_.*command)();
    faults_.Clear();
    EXPECT_THAT(NewAlerts(), ElementsAre(GeneralError(u"The host is busy."))) << operation;
  };
  fails("Application::ActiveWorkbook", &Connect::SendSms);
  fails("Application::ActiveWorkbook", &Connect::DeliveryReport);
  fails("BarControl::SetEnabled", &Connect::Logout);
  internet_.Answer("<SMS>L-x</SMS>");
  fails("Settings::Write", &Connect::GetModes);
  LogIn();
  EXPECT_THAT(Enabled(), ElementsAre(false, true, true, true, true));
}

}  // namespace
}  // namespace quorvel
