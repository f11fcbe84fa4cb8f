#include "hosts/excel/dialog_metrics.h"

#include "hosts/excel/windows10.h"

namespace quorvel {

namespace {

using GetDpiForWindowFunction = UINT WINAPI(HWND);
using SystemParametersInfoForDpiFunction = BOOL WINAPI(UINT, UINT, void*, UINT, UINT);
using AdjustWindowRectExForDpiFunction = BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT);

UINT ScreenDpi() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return static_cast<UINT>(dpi);
}

HFONT MessageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  static const auto for_dpi = Windows10<SystemParametersInfoForDpiFunction>("SystemParametersInfoForDpi");
  if (for_dpi == nullptr || for_dpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, dpi) == FALSE) {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    metrics.lfMessageFont.lfHeight =
        MulDiv(metrics.lfMessageFont.lfHeight, static_cast<int>(dpi), static_cast<int>(ScreenDpi()));
  }
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace

UINT DpiOf(HWND window) {
  static const auto for_window = Windows10<GetDpiForWindowFunction>("GetDpiForWindow");
  const UINT dpi = for_window != nullptr && window != nullptr ? for_window(window) : 0;
  return dpi != 0 ? dpi : ScreenDpi();
}

DialogMetrics::DialogMetrics(UINT dpi) : dpi_(dpi), font_(MessageFont(dpi)) {
  constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const HDC screen = GetDC(nullptr);
  const HGDIOBJ former = SelectObject(screen, font_);
  TEXTMETRICW metrics{};
  GetTextMetricsW(screen, &metrics);
  SIZE letters{};
  GetTextExtentPoint32W(screen, kLetters, 52, &letters);
  SelectObject(screen, former);
  ReleaseDC(nullptr, screen);
  unit_x_ = static_cast<int>((letters.cx / 26 + 1) / 2);  // as the system's dialog manager rounds it
  unit_y_ = static_cast<int>(metrics.tmHeight);
}

DialogMetrics::~DialogMetrics() {
  DeleteObject(font_);
}

RECT DialogMetrics::Pixels(const Bounds& bounds) const {
  const auto x = [&](int units) { return MulDiv(units, unit_x_, 4); };
  const auto y = [&](int units) { return MulDiv(units, unit_y_, 8); };
  return {x(bounds.x), y(bounds.y), x(bounds.x + bounds.width), y(bounds.y + bounds.height)};
}

LONG DialogMetrics::FieldHeight() const {
  return unit_y_ + 8;  // as high as a combo box makes itself, whatever the resolution
}

SIZE DialogMetrics::WindowSize(int width, int height, DWORD style, DWORD extended_style) const {
  RECT frame = Pixels({0, 0, width, height});
  static const auto for_dpi = Windows10<AdjustWindowRectExForDpiFunction>("AdjustWindowRectExForDpi");
  if (for_dpi == nullptr || for_dpi(&frame, style, FALSE, extended_style, dpi_) == FALSE) {
    AdjustWindowRectEx(&frame, style, FALSE, extended_style);
  }
  return {frame.right - frame.left, frame.bottom - frame.top};
}

}  // namespace quorvel
