#pragma once

#include <array>

#include "addin/common/session.h"
#include "platform/settings.h"
#include "platform/text.h"

namespace quorvel {

inline constexpr TextView kSettingsApplication = u"Tessaly";
// The application's own title, under which one setting is kept.
inline constexpr TextView kApplicationTitle = u"Quorvel";

struct SettingKey {
  TextView application;
  TextView section;
  TextView key;
  TextView fallback;  // read when nothing is kept
  TextView meaning;
  bool secret = false;  // a listing masks its value
};

inline constexpr SettingKey kModesSetting{kSettingsApplication, u"STARTUP", u"MODES", u"",
                                          u"submission modes: letter-description, comma-separated"};
inline constexpr SettingKey kProxyTypeSetting{kSettingsApplication, u"ProxySettings", u"ProxyType", u"",
                                              u"0 preconfigured, 1 direct, 3 named proxy"};
inline constexpr SettingKey kProxyNameSetting{kSettingsApplication, u"ProxySettings", u"ProxyName", u"",
                                              u"proxy host"};
inline constexpr SettingKey kProxyPortSetting{kSettingsApplication, u"ProxySettings", u"ProxyPort", u"",
                                              u"proxy port, at most 32767"};
inline constexpr SettingKey kProxyUserNameSetting{kSettingsApplication, u"ProxySettings", u"ProxyUserName",
                                                  u"", u"proxy user name"};
inline constexpr SettingKey kProxyUserPwdSetting{
    kSettingsApplication, u"ProxySettings", u"ProxyUserPWD", u"", u"proxy password", true};
inline constexpr SettingKey kClientUserNameSetting{kSettingsApplication, u"AuthDetails", u"ClientUserName",
                                                   u"", u"last user name that logged in"};
inline constexpr SettingKey kClientCrnSetting{kSettingsApplication, u"AuthDetails", u"ClientCRN", u"",
                                              u"last CRN that logged in"};
inline constexpr SettingKey kServerUrlSetting{kSettingsApplication, u"AuthDetails", u"ServerURL", u"",
                                              u"gateway host of that CRN"};
inline constexpr SettingKey kRemoveDuplicatesSetting{kSettingsApplication, u"ApplicationSettings",
                                                     u"RemoveDuplicates", u"",
                                                     u"1: duplicate numbers are dropped"};
inline constexpr SettingKey kFastProcessingSetting{
    kSettingsApplication, u"FromEmailSettings", u"FastProcessing", u"",
    u"1: e-mail copies go out through the sender's own account"};
inline constexpr SettingKey kFromEmailIdSetting{kSettingsApplication, u"FromEmailSettings", u"FromEmailID",
                                                u"", u"sender of e-mail copies"};
inline constexpr SettingKey kFromEmailPwdSetting{kSettingsApplication,
                                                 u"FromEmailSettings",
                                                 u"FromEmailPwd",
                                                 u"",
                                                 u"password of that e-mail account",
                                                 true};
inline constexpr SettingKey kHeaderSetting{kSettingsApplication, u"Grouping", u"Header", u"",
                                           u"header of grouped messages"};
inline constexpr SettingKey kFooterSetting{kSettingsApplication, u"Grouping", u"Footer", u"",
                                           u"footer of grouped messages"};
inline constexpr SettingKey kCountryCodeSetting{kSettingsApplication, u"CountryCode", u"LatestCountryCode",
                                                u"", u"country code last used"};
inline constexpr SettingKey kCountryLengthSetting{kSettingsApplication, u"CountryLeng", u"SelectedCountryLen",
                                                  u"", u"length of the national number that goes with it"};
inline constexpr SettingKey kDisplayOnConnectSetting{kApplicationTitle, u"Settings", u"DisplayOnConnect",
                                                     u"0", u"not used"};

// Everything that is kept, in the order of a listing.
inline constexpr std::array kAllSettings = {
    &kModesSetting,         &kProxyTypeSetting,        &kProxyNameSetting,      &kProxyPortSetting,
    &kProxyUserNameSetting, &kProxyUserPwdSetting,     &kClientUserNameSetting, &kClientCrnSetting,
    &kServerUrlSetting,     &kRemoveDuplicatesSetting, &kFastProcessingSetting, &kFromEmailIdSetting,
    &kFromEmailPwdSetting,  &kHeaderSetting,           &kFooterSetting,         &kCountryCodeSetting,
    &kCountryLengthSetting, &kDisplayOnConnectSetting};

// Flags are "1"; every other text is off.
inline constexpr TextView kOn = u"1";
inline constexpr TextView kOff = u"0";

// The add-in's per-user settings.
class SettingsStore {
 public:
  explicit SettingsStore(Settings& settings) : settings_(settings) {}

  [[nodiscard]] Text Read(const SettingKey& key) const;
  [[nodiscard]] bool ReadFlag(const SettingKey& key) const { return Read(key) == kOn; }
  // Throws RuntimeError when the host cannot keep it.
  void Write(const SettingKey& key, TextView value);
  void WriteFlag(const SettingKey& key, bool value) { Write(key, value ? kOn : kOff); }

 private:
  Settings& settings_;
};

// The five proxy fields between the store and the session. A type or port that is no number reads as 0; one
// beyond 16 bits throws Overflow.
void GetProxySettings(const SettingsStore& settings, Session& session);
void SaveProxySettings(const Session& session, SettingsStore& settings);

// Keeps the default list of submission modes when none is kept.
void SeedModes(SettingsStore& settings);

// Whether the user asked for a display at connection.
[[nodiscard]] bool DisplayOnConnect(const SettingsStore& settings);

}  // namespace quorvel
