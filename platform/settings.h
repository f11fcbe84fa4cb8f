#pragma once

#include <optional>

#include "platform/text.h"

namespace quorvel {

// Where in the per-user settings a text is kept, in the order of the platform's settings facility.
struct SettingPath {
  TextView application;
  TextView section;
  TextView key;
};

// Per-user settings: texts by application, section and key.
class Settings {
 public:
  virtual ~Settings() = default;

  // Nothing when the key is missing. Never fails.
  [[nodiscard]] virtual std::optional<Text> Read(const SettingPath& path) const = 0;
  // Throws RuntimeError when it cannot be kept.
  virtual void Write(const SettingPath& path, TextView value) = 0;
};

}  // namespace quorvel
