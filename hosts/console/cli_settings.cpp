#include <algorithm>

#include "account/settings_store.h"
#include "hosts/console/commands.h"

namespace quorvel {

namespace {

constexpr const char* kMask = "********";

bool IsSecret(const StoredSetting& setting) {
  return std::any_of(kAllSettings.begin(), kAllSettings.end(), [&](const SettingKey* known) {
    return known->secret && known->application == setting.application && known->section == setting.section &&
           known->key == setting.key;
  });
}

}  // namespace

ExitStatus RunSettings(const SqliteSettings& settings, Output& output) {
  for (const StoredSetting& setting : settings.List()) {
    const bool masked = IsSecret(setting) && !setting.value.empty();
    const std::string value = masked ? kMask : ToUtf8(setting.value);
    const std::string application = ToUtf8(setting.application);
    const std::string section = ToUtf8(setting.section);
    const std::string key = ToUtf8(setting.key);
    output.Print({application, "/", section, "/", key, " = ", value, "\n"});
    output.result()[application][section][key] = value;
  }
  return ExitStatus::kDone;
}

}  // namespace quorvel
