#pragma once

#include "platform/settings.h"

namespace quorvel {

// The per-user settings of the platform's own facility:
// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\<application>\<section>, one text value per key.
// Both bitnesses see the same ones.
class RegistrySettings : public Settings {
 public:
  // A value that is no text counts as missing.
  [[nodiscard]] std::optional<Text> Read(const SettingPath& path) const override;
  // Throws RuntimeError 70 (Permission denied) when access is refused, otherwise 5.
  void Write(const SettingPath& path, TextView value) override;
};

}  // namespace quorvel
