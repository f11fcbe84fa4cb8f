#include "hosts/excel/registry_settings.h"

#include <string>

#include "hosts/excel/registry_key.h"
#include "hosts/excel/wide.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

Text KeyOf(const SettingPath& path) {
  Text key = uR"(Software\VB and VBA Program Settings\)";
  key.append(path.application).append(u"\\").append(path.section);
  return key;
}

}  // namespace

std::optional<Text> RegistrySettings::Read(const SettingPath& path) const {
  return ReadRegistryText(HKEY_CURRENT_USER, KeyOf(path), Text(path.key));
}

void RegistrySettings::Write(const SettingPath& path, TextView value) {
  const LSTATUS status = WriteRegistryText(HKEY_CURRENT_USER, KeyOf(path), Text(path.key), Text(value));
  if (status == ERROR_ACCESS_DENIED) throw RuntimeError(70, u"Permission denied");
  if (status != ERROR_SUCCESS) throw InvalidCall();
}

}  // namespace quorvel
