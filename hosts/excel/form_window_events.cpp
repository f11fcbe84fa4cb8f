// The user's half of FormWindow: window messages become the form's events.

#include <utility>

#include "hosts/excel/form_window.h"
#include "hosts/excel/theme_scope.h"

namespace quorvel {

namespace {

constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED

}  // namespace

INT_PTR CALLBACK FormWindow::DialogProcedure(HWND dialog, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, second);
    return FALSE;
  }
  auto* const window = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (window == nullptr || window->dialog_ == nullptr) return FALSE;
  const auto keep = window->weak_from_this().lock();  // a handler may close the form
  return window->Handle(message, first, second);
}

// A text box tells nobody of a click; and one of several lines must not be selected whole when Tab comes to
// it, or the next key would replace a long text.
LRESULT CALLBACK FormWindow::BoxProcedure(HWND box, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                          DWORD_PTR window) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(box, BoxProcedure, id);
  const LRESULT result = DefSubclassProc(box, message, first, second);
  auto* const self = reinterpret_cast<FormWindow*>(window);
  if (message == WM_GETDLGCODE && self->controls_[id].HasLines()) return result & ~DLGC_HASSETSEL;
  if (message == WM_LBUTTONUP) {
    const auto keep = self->weak_from_this().lock();
    self->Run([&] { static_cast<TextBox&>(self->controls_[id].control()).UserClick(); });
  }
  return result;
}

template <class Handler>
void FormWindow::Run(Handler&& handler) {
  try {
    handler();
  } catch (...) {
    state_.failure = std::current_exception();  // rethrown by the loop: none may cross the system's frames
  }
}

INT_PTR FormWindow::Handle(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      Command(LOWORD(first), HIWORD(first));
      return TRUE;
    case WM_CLOSE:
      Run([&] { form_.UserClose(); });
      return TRUE;
    case WM_TIMER:
      Run([&] { static_cast<Timer&>(controls_.at(first - kFirstId).control()).Tick(); });
      return TRUE;
    case WM_ACTIVATE:
      if (LOWORD(first) == WA_INACTIVE || focus_ == nullptr) return FALSE;
      moving_focus_ = true;
      SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(std::exchange(focus_, nullptr)), TRUE);
      moving_focus_ = false;
      return TRUE;
    case WM_SETCURSOR:
      if (!state_.busy) return FALSE;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case kDpiChanged: {
      const ThemeScope theme;
      metrics_ = std::make_unique<DialogMetrics>(LOWORD(first));
      Place(reinterpret_cast<const RECT*>(second));
      return TRUE;
    }
    default:
      return FALSE;
  }
}

void FormWindow::Command(int id, int notification) {
  if (showing_) return;
  if (id == IDCANCEL) return Escape();
  if (id < kFirstId || id >= kFirstId + static_cast<int>(controls_.size())) return;
  ControlWindow& window = controls_[static_cast<std::size_t>(id - kFirstId)];
  const ControlKind kind = window.control().kind();
  const bool button =
      kind == ControlKind::kButton || kind == ControlKind::kCheckBox || kind == ControlKind::kOptionButton;
  const bool focused = notification == (button                           ? BN_SETFOCUS
                                        : kind == ControlKind::kComboBox ? CBN_SETFOCUS
                                                                         : EN_SETFOCUS);
  if (focused) return Focused(window.control());
  Run([&] {
    button&& notification == BN_CLICKED ? Clicked(window.control()) : Changed(window, notification);
  });
}

void FormWindow::Focused(Control& control) {
  const bool outer = std::exchange(in_focus_event_, true);
  Run([&] { control.UserFocus(); });
  in_focus_event_ = outer;
}

void FormWindow::Clicked(Control& control) const {
  switch (control.kind()) {
    case ControlKind::kButton:
      return static_cast<Button&>(control).UserPress();
    case ControlKind::kCheckBox: {
      auto& box = static_cast<CheckBox&>(control);
      return box.UserSet(!box.value());
    }
    case ControlKind::kOptionButton:
      // The window also "clicks" itself when the focus comes to it; that is no choice.
      if (!moving_focus_ && GetKeyState(VK_TAB) >= 0) static_cast<OptionButton&>(control).UserChoose();
      return;
    default:
      return;
  }
}

void FormWindow::Changed(ControlWindow& window, int notification) const {
  Control& control = window.control();
  if (control.kind() == ControlKind::kTextBox && notification == EN_CHANGE) {
    static_cast<TextBox&>(control).UserType(window.ReadText());
  } else if (control.kind() == ControlKind::kComboBox && notification == CBN_SELCHANGE) {
    static_cast<ComboBox&>(control).UserSelect(
        static_cast<int>(SendMessageW(window.handle(), CB_GETCURSEL, 0, 0)));
  } else if (control.kind() == ControlKind::kComboBox && notification == CBN_EDITCHANGE) {
    static_cast<ComboBox&>(control).UserType(window.ReadText());
  }
}

// Presses the cancel button; without one, closes the window as its frame does.
void FormWindow::Escape() {
  for (ControlWindow& window : controls_) {
    Control& control = window.control();
    const bool cancel = control.kind() == ControlKind::kButton &&
                        static_cast<Button&>(control).role() == Button::Role::kCancel;
    if (cancel) return Run([&] { static_cast<Button&>(control).UserPress(); });
  }
  Run([&] { form_.UserClose(); });
}

}  // namespace quorvel
