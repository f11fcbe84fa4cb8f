#pragma once

#include <map>
#include <tuple>

#include "platform/settings.h"

namespace quorvel {

class MemorySettings : public Settings {
 public:
  [[nodiscard]] std::optional<Text> Read(const SettingPath& path) const override;
  void Write(const SettingPath& path, TextView value) override;

  [[nodiscard]] std::size_t size() const { return values_.size(); }

 private:
  std::map<std::tuple<Text, Text, Text>, Text> values_;
};

}  // namespace quorvel
