#include "platform/memory/memory_settings.h"

namespace quorvel {

std::optional<Text> MemorySettings::Read(const SettingPath& path) const {
  const auto found = values_.find({Text(path.application), Text(path.section), Text(path.key)});
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void MemorySettings::Write(const SettingPath& path, TextView value) {
  values_.insert_or_assign({Text(path.application), Text(path.section), Text(path.key)}, Text(value));
}

}  // namespace quorvel
