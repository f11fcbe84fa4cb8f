#include "account/settings_store.h"

#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr TextView kDefaultModes =
    u"L-Excel AddIn,C-Client Portal,M-Mobile Client,G-Group Portal,E-Email To SMS,R-Reseller Portal,B-Bulk Upload,"
    u"A-API,H-HTTP Post";

std::int16_t ReadNumber(const SettingsStore& settings, const SettingKey& key) {
  return ToInteger(Val(u"0" + settings.Read(key)));
}

}  // namespace

Text SettingsStore::Read(const SettingKey& key) const {
  return settings_.Read({key.application, key.section, key.key}).value_or(Text(key.fallback));
}

void SettingsStore::Write(const SettingKey& key, TextView value) {
  settings_.Write({key.application, key.section, key.key}, value);
}

void GetProxySettings(const SettingsStore& settings, Session& session) {
  session.ProxyType = ReadNumber(settings, kProxyTypeSetting);
  session.ProxyName = settings.Read(kProxyNameSetting);
  session.ProxyPort = ReadNumber(settings, kProxyPortSetting);
  session.ProxyUserName = settings.Read(kProxyUserNameSetting);
  session.ProxyUserPWD = settings.Read(kProxyUserPwdSetting);
}

void SaveProxySettings(const Session& session, SettingsStore& settings) {
  settings.Write(kProxyTypeSetting, NumberToText(std::int32_t{session.ProxyType}));
  settings.Write(kProxyNameSetting, session.ProxyName);
  settings.Write(kProxyPortSetting, NumberToText(std::int32_t{session.ProxyPort}));
  settings.Write(kProxyUserNameSetting, session.ProxyUserName);
  settings.Write(kProxyUserPwdSetting, session.ProxyUserPWD);
}

void SeedModes(SettingsStore& settings) {
  if (settings.Read(kModesSetting).empty()) settings.Write(kModesSetting, kDefaultModes);
}

bool DisplayOnConnect(const SettingsStore& settings) {
  return settings.ReadFlag(kDisplayOnConnectSetting);
}

}  // namespace quorvel
