#pragma once

#include "hosts/excel/win32.h"

namespace quorvel {

// This DLL's module, also where the running program is another one.
[[nodiscard]] HINSTANCE ThisModule();

// While it lives, windows made on this thread have the system's current visual style, whatever the host's own
// manifest says.
class ThemeScope {
 public:
  ThemeScope();
  ThemeScope(const ThemeScope&) = delete;
  ThemeScope& operator=(const ThemeScope&) = delete;
  ~ThemeScope();

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace quorvel
