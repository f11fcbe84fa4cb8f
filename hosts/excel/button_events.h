#pragma once

#include <functional>

#include "hosts/excel/com_ptr.h"
#include "hosts/excel/win32.h"

namespace quorvel {

// The connection of one command bar button's click event to a handler; ends with the object. The handler may
// end it, too.
class ButtonEvents {
 public:
  // Throws RuntimeError when the button has no click event.
  ButtonEvents(const ComPtr<IDispatch>& button, std::function<void()> handler);
  ButtonEvents(const ButtonEvents&) = delete;
  ButtonEvents& operator=(const ButtonEvents&) = delete;
  ~ButtonEvents();

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

// Office's events of a command bar button, and their only member, Click(button, ByRef cancel_default).
inline constexpr IID kButtonEvents = {
    0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kButtonClick = 1;

}  // namespace quorvel
