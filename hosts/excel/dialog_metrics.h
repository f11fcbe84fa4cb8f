#pragma once

#include "hosts/excel/win32.h"
#include "platform/control.h"

namespace quorvel {

inline constexpr UINT kStandardDpi = 96;

// The resolution that a window is shown at; where Windows has no per-monitor resolution, the screen's.
[[nodiscard]] UINT DpiOf(HWND window);

// The system's message font at one resolution, and the dialog units that follow from it.
class DialogMetrics {
 public:
  explicit DialogMetrics(UINT dpi);
  DialogMetrics(const DialogMetrics&) = delete;
  DialogMetrics& operator=(const DialogMetrics&) = delete;
  ~DialogMetrics();

  [[nodiscard]] UINT dpi() const { return dpi_; }
  [[nodiscard]] HFONT font() const { return font_; }
  // Dialog units to pixels.
  [[nodiscard]] RECT Pixels(const Bounds& bounds) const;
  // The height in pixels of a box for one line of text.
  [[nodiscard]] LONG FieldHeight() const;
  // The size of a window whose client area is `width` by `height` dialog units.
  [[nodiscard]] SIZE WindowSize(int width, int height, DWORD style, DWORD extended_style) const;

 private:
  UINT dpi_;
  HFONT font_;
  int unit_x_ = 0;  // pixels for 4 horizontal units
  int unit_y_ = 0;  // pixels for 8 vertical units
};

}  // namespace quorvel
