#pragma once

#include "hosts/excel/win32.h"

namespace quorvel {

// This DLL's module, also where the running program is another one.
[[nodiscard]] HINSTANCE ThisModule();

// While it lives, windows made on this thread have the system's current visual style, whatever the host's own
// manifest says, and follow a monitor's resolution as `owner` does: Office runs add-ins in a context in which
// the system would stretch their windows. `owner` may be null.
class WindowScope {
 public:
  explicit WindowScope(HWND owner);
  WindowScope(const WindowScope&) = delete;
  WindowScope& operator=(const WindowScope&) = delete;
  ~WindowScope();

 private:
  HANDLE style_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
  DPI_AWARENESS_CONTEXT former_ = nullptr;
};

}  // namespace quorvel
