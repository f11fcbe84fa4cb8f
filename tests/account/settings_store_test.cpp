#include "account/settings_store.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/memory/memory_settings.h"
#include "platform/runtime_error.h"

namespace quorvel {
namespace {

TEST(SettingsStore, EverySettingHasItsPlaceInTheUsersSettings) {
  // Application, section and key.
  constexpr std::array<TextView, 18> kPlaces = {u"Tessaly/STARTUP/MODES",
                                                u"Tessaly/ProxySettings/ProxyType",
                                                u"Tessaly/ProxySettings/ProxyName",
                                                u"Tessaly/ProxySettings/ProxyPort",
                                                u"Tessaly/ProxySettings/ProxyUserName",
                                                u"Tessaly/ProxySettings/ProxyUserPWD",
                                                u"Tessaly/AuthDetails/ClientUserName",
                                                u"Tessaly/AuthDetails/ClientCRN",
                                                u"Tessaly/AuthDetails/ServerURL",
                                                u"Tessaly/ApplicationSettings/RemoveDuplicates",
                                                u"Tessaly/FromEmailSettings/FastProcessing",
                                                u"Tessaly/FromEmailSettings/FromEmailID",
                                                u"Tessaly/FromEmailSettings/FromEmailPwd",
                                                u"Tessaly/Grouping/Header",
                                                u"Tessaly/Grouping/Footer",
                                                u"Tessaly/CountryCode/LatestCountryCode",
                                                u"Tessaly/CountryLeng/SelectedCountryLen",
                                                u"Quorvel/Settings/DisplayOnConnect"};
  ASSERT_EQ(kAllSettings.size(), kPlaces.size());
  MemorySettings kept;
  SettingsStore store(kept);
  for (std::size_t i = 0; i < kPlaces.size(); ++i) {
    const SettingKey& setting = *kAllSettings[i];
    const std::vector<Text> place = Split(kPlaces[i], u"/");
    EXPECT_EQ(store.Read(setting), place[2] == u"DisplayOnConnect" ? u"0" : u"");
    store.Write(setting, u" as it is ");
    EXPECT_EQ(kept.Read({place[0], place[1], place[2]}), u" as it is ") << ToUtf8(kPlaces[i]);
    EXPECT_EQ(store.Read(setting), u" as it is ");
  }
}

TEST(SettingsStore, AFlagIsOnWhenItIsOne) {
  MemorySettings kept;
  SettingsStore store(kept);
  for (const TextView off : {u"", u"0", u"01", u" 1", u"1 ", u"-1", u"True"}) {
    store.Write(kDisplayOnConnectSetting, off);
    EXPECT_FALSE(DisplayOnConnect(store)) << ToUtf8(off);
  }
  store.Write(kDisplayOnConnectSetting, u"1");
  EXPECT_TRUE(DisplayOnConnect(store));
}

TEST(SettingsStore, ProxyNumbersAreReadBehindAZero) {
  struct Row {
    TextView text;
    int value;
    int error = 0;
  };
  for (const auto& [text, value, error] :
       {Row{u"", 0}, Row{u"abc", 0}, Row{u"3", 3}, Row{u"8080x", 8080}, Row{u" 80", 80}, Row{u"-5", 0},
        Row{u"1.5", 2}, Row{u"32767", 32767}, Row{u"32768", 0, 6}}) {
    MemorySettings kept;
    kept.Write({u"Tessaly", u"ProxySettings", u"ProxyType"}, text);
    kept.Write({u"Tessaly", u"ProxySettings", u"ProxyPort"}, text);
    Session session;
    int raised = 0;
    try {
      GetProxySettings(SettingsStore(kept), session);
    } catch (const RuntimeError& overflow) {
      raised = overflow.number();
    }
    EXPECT_EQ(raised, error) << ToUtf8(text);
    EXPECT_EQ(session.ProxyType, value) << ToUtf8(text);
    EXPECT_EQ(session.ProxyPort, value) << ToUtf8(text);
  }
}

TEST(SettingsStore, AnEmptyListOfModesIsSeededWithNine) {
  MemorySettings kept;
  SettingsStore store(kept);
  store.Write(kModesSetting, u"");
  SeedModes(store);
  Text letters;
  for (const Text& mode : Split(store.Read(kModesSetting), u",")) {
    EXPECT_GT(mode.size(), 2U);
    EXPECT_EQ(mode[1], u'-');
    letters += mode[0];
  }
  EXPECT_EQ(letters, u"LCMGERBAH");

  store.Write(kModesSetting, u"X-own");
  SeedModes(store);
  EXPECT_EQ(store.Read(kModesSetting), u"X-own");
}

}  // namespace
}  // namespace quorvel
