#include "account/frmProxySettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/numbers.h"
#include "tests/support/addin_test.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrmProxySettingsTest : public AddInTest {
 protected:
  // The five settings as they are kept, each followed by a bar.
  [[nodiscard]] Text Kept() const {
    Text all;
    for (const TextView key : {u"ProxyType", u"ProxyName", u"ProxyPort", u"ProxyUserName", u"ProxyUserPWD"}) {
      all += settings_.Read({u"Tessaly", u"ProxySettings", key}).value_or(u"-") + u"|";
    }
    return all;
  }

  [[nodiscard]] Text InSession() const {
    const Session& session = connect_.session();
    return NumberToText(std::int32_t{session.ProxyType}) + u"|" + session.ProxyName + u"|" +
           NumberToText(std::int32_t{session.ProxyPort}) + u"|" + session.ProxyUserName + u"|" +
           session.ProxyUserPWD + u"|";
  }

  // Plays the user on the form; it is closed afterwards. Whether it was still open then.
  bool Show(const std::function<void(frmProxySettings&)>& user) {
    bool open = false;
    forms_.On<frmProxySettings>([&](frmProxySettings& form) {
      user(form);
      open = form.loaded();
      form.cmdCancel.UserPress();
    });
    connect_.ProxySettings();
    return open;
  }

  // Chooses the named proxy, types and presses OK.
  static void Type(frmProxySettings& form, TextView host, TextView port) {
    form.cboProxyType.UserSelect(2);
    form.txtHostName.UserType(host);
    form.txtPort.UserType(port);
    form.txtUserName.UserType(u" joe ");
    form.txtPassword.UserType(u" p w ");
    form.cmdOk.UserPress();
  }
};

TEST_F(FrmProxySettingsTest, ShowsTheSessionsProxy) {
  struct Row {
    TextView type, port;
    int index;
    TextView shown_port;
  };
  for (const Row& row : {Row{u"", u"", 0, u""}, Row{u"1", u"0", 1, u""}, Row{u"2", u"8080", -1, u"8080"},
                         Row{u"3", u"32767", 2, u"32767"}}) {
    settings_.Write({u"Tessaly", u"ProxySettings", u"ProxyType"}, row.type);
    settings_.Write({u"Tessaly", u"ProxySettings", u"ProxyPort"}, row.port);
    settings_.Write({u"Tessaly", u"ProxySettings", u"ProxyName"}, u"proxy.example");
    connect_.OnConnection();
    const Text kept = Kept();
    EXPECT_TRUE(Show([&](frmProxySettings& form) {
      EXPECT_THAT(
          form.cboProxyType.items(),
          ElementsAre(u"Proxy config from registry", u"Directly connect to the Internet", u"Use proxy list"));
      EXPECT_EQ(form.cboProxyType.list_index(), row.index);
      EXPECT_EQ(form.txtPort.text(), row.shown_port);
      EXPECT_EQ(form.txtHostName.text(), u"proxy.example");
      form.txtHostName.UserType(u"typed, then cancelled");
    }));
    EXPECT_EQ(connect_.session().ProxyName, u"proxy.example");
    EXPECT_EQ(Kept(), kept);
  }
}

TEST_F(FrmProxySettingsTest, ANamedProxyIsKeptTrimmedAndADirectConnectionForgetsIt) {
  EXPECT_FALSE(Show([](frmProxySettings& form) { Type(form, u" proxy.example ", u"8080x"); }));
  EXPECT_EQ(Kept(), u"3|proxy.example|8080|joe|p w|");
  EXPECT_EQ(InSession(), Kept());
  EXPECT_THAT(forms_.pointers(), ElementsAre(Pointer::kBusy, Pointer::kDefault));

  for (const int index : {1, 0}) {
    EXPECT_FALSE(Show([&](frmProxySettings& form) {
      form.cboProxyType.UserSelect(index);
      form.cmdOk.UserPress();
    }));
    EXPECT_EQ(Kept(), index == 1 ? u"1||0|||" : u"0||0|||");
    EXPECT_EQ(InSession(), Kept());
  }
}

TEST_F(FrmProxySettingsTest, ANamedProxyNeedsAHostAndAPort) {
  struct Row {
    TextView host, port, message;
    std::string_view focus;
  };
  for (const Row& row : {Row{u"  ", u"", u"Invalid Proxy Name/Address", "txtHostName"},
                         Row{u"p", u"", u"Invalid Proxy Port", "txtPort"},
                         Row{u"p", u"x8080", u"Invalid Proxy Port", "txtPort"},
                         Row{u"p", u"0", u"Invalid Proxy Port", "txtPort"}}) {
    EXPECT_TRUE(Show([&](frmProxySettings& form) {
      Type(form, row.host, row.port);
      EXPECT_EQ(form.active_control()->name(), row.focus);
    }));
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{Text(row.message), kWarning, u"S M S"}));
  }
  EXPECT_EQ(Kept(), u"-|-|-|-|-|");
  EXPECT_EQ(InSession(), u"0||0|||");
}

TEST_F(FrmProxySettingsTest, APortBeyond16BitsIsReportedAndChangesNothing) {
  EXPECT_FALSE(Show([](frmProxySettings& form) { Type(form, u"p", u"32767"); }));
  EXPECT_THAT(NewAlerts(), IsEmpty());
  EXPECT_TRUE(Show([](frmProxySettings& form) { Type(form, u"q", u"32768"); }));
  EXPECT_THAT(NewAlerts(), ElementsAre(GeneralError(u"Overflow")));
  EXPECT_EQ(Kept(), u"3|p|32767|joe|p w|");
  EXPECT_EQ(InSession(), Kept());
  EXPECT_EQ(forms_.pointers().back(), Pointer::kDefault);
}

TEST_F(FrmProxySettingsTest, WithNoKindChosenEverythingStaysAsItIs) {
  settings_.Write({u"Tessaly", u"ProxySettings", u"ProxyType"}, u"2");
  settings_.Write({u"Tessaly", u"ProxySettings", u"ProxyName"}, u"p");
  connect_.OnConnection();
  EXPECT_FALSE(Show([](frmProxySettings& form) { form.cmdOk.UserPress(); }));
  EXPECT_EQ(Kept(), u"2|p|0|||");
  EXPECT_EQ(InSession(), Kept());
}

}  // namespace
}  // namespace quorvel
