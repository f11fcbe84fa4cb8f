// The user's half of FormWindow: window messages become the form's events.

#include <algorithm>
#include <utility>

#include "hosts/excel/form_window.h"
#include "hosts/excel/window_scope.h"

namespace quorvel {

namespace {

constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED
constexpr UINT kListClosed = WM_APP;  // the combo box of that index has closed its list

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
LRESULT CALLBACK FormWindow::ControlProcedure(HWND control, UINT message, WPARAM first, LPARAM second,
                                              UINT_PTR index, DWORD_PTR window) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(control, ControlProcedure, index);
  auto* const self = reinterpret_cast<FormWindow*>(window);
  const auto keep = self->weak_from_this().lock();  // a handler may close the form
  const bool outer = std::exchange(self->taking_focus_, message == WM_SETFOCUS);
  const LRESULT result = DefSubclassProc(control, message, first, second);
  self->taking_focus_ = outer;
  const ControlWindow& own = self->controls_[index];
  if (message == WM_GETDLGCODE && own.HasLines()) return result & ~DLGC_HASSETSEL;
  if (message == WM_LBUTTONUP && own.control().kind() == ControlKind::kTextBox) {
    self->Run([&] { static_cast<TextBox&>(own.control()).UserClick(); });
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
      return Tick(first) ? TRUE : FALSE;
    case WM_DESTROY:
      Lost();
      return TRUE;
    case kListClosed:
      if (const ControlWindow* const combo = Find(first, ControlKind::kComboBox)) ListClosed(*combo);
      return TRUE;
    case WM_ACTIVATE:
      if (LOWORD(first) == WA_INACTIVE || focus_ == nullptr) return FALSE;
      SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(std::exchange(focus_, nullptr)), TRUE);
      return TRUE;
    case WM_SETCURSOR:
      if (!state_.busy) return FALSE;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case kDpiChanged: {
      const WindowScope scope(dialog_);
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
      if (!taking_focus_) static_cast<OptionButton&>(control).UserChoose();
      return;
    default:
      return;
  }
}

void FormWindow::Changed(ControlWindow& window, int notification) {
  Control& control = window.control();
  if (control.kind() == ControlKind::kTextBox && notification == EN_CHANGE) {
    const Text text = window.ReadText();
    window.ShowDirection(text);
    static_cast<TextBox&>(control).UserType(text);
  } else if (control.kind() == ControlKind::kComboBox) {
    ComboChanged(window, notification);
  }
}

void FormWindow::ComboChanged(const ControlWindow& window, int notification) {
  auto& combo = static_cast<ComboBox&>(window.control());
  switch (notification) {
    case CBN_DROPDOWN:
      list_confirmed_ = list_told_ = false;
      return;
    case CBN_SELENDOK:
      list_confirmed_ = true;
      return;
    case CBN_SELCHANGE:
      list_told_ = true;
      return combo.UserSelect(static_cast<int>(SendMessageW(window.handle(), CB_GETCURSEL, 0, 0)));
    case CBN_CLOSEUP:  // more may be told of this choice
      PostMessageW(dialog_, kListClosed, static_cast<WPARAM>(&window - controls_.data()), 0);
      return;
    case CBN_EDITCHANGE:
      return combo.UserType(window.ReadText());
    default:
      return;
  }
}

ControlWindow* FormWindow::Find(WPARAM index, ControlKind kind) {
  const bool known = index < controls_.size() && controls_[index].control().kind() == kind;
  return known ? &controls_[index] : nullptr;
}

// A list that is left without a choice goes back to its former one and tells nobody; and one that is left by
// choosing the same item again may not tell of it.
void FormWindow::ListClosed(const ControlWindow& window) {
  auto& combo = static_cast<ComboBox&>(window.control());
  if (combo.style() != ComboBox::Style::kList) return;
  const auto index = static_cast<int>(SendMessageW(window.handle(), CB_GETCURSEL, 0, 0));
  const bool chosen_again = list_confirmed_ && !list_told_;
  if (chosen_again || index != combo.list_index()) Run([&] { combo.UserSelect(index); });
}

// Whether the timer is the form's: programs that look into others' windows set their own.
bool FormWindow::Tick(WPARAM id) {
  ControlWindow* const timer = Find(id - kFirstId, ControlKind::kTimer);
  if (timer == nullptr) return false;
  if (IsWindowEnabled(dialog_) == FALSE)
    return true;  // another dialog is open over it: the next tick will do
  Run([&] { static_cast<Timer&>(timer->control()).Tick(); });
  return true;
}

// The owner was closed by somebody else, and the dialog with it.
void FormWindow::Lost() {
  dialog_ = nullptr;
  Release();
  Run([&] { form_.Unload(); });
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

// The arrow keys go from one option button to the next one of the same frame, whatever stands between them,
// and choose it.
bool FormWindow::ChooseByArrow(const MSG& key) {
  const bool forward = key.wParam == VK_RIGHT || key.wParam == VK_DOWN;
  if (!forward && key.wParam != VK_LEFT && key.wParam != VK_UP) return false;
  const auto from = std::find_if(controls_.begin(), controls_.end(), [&](const ControlWindow& window) {
    return window.handle() == key.hwnd && window.control().kind() == ControlKind::kOptionButton;
  });
  if (from == controls_.end()) return false;
  std::vector<OptionButton*> group;
  std::size_t place = 0;
  for (const ControlWindow& window : controls_) {
    Control& control = window.control();
    if (control.kind() != from->control().kind() || control.frame() != from->control().frame()) continue;
    if (!control.usable()) continue;
    if (&control == &from->control()) place = group.size();
    group.push_back(static_cast<OptionButton*>(&control));
  }
  if (group.empty()) return true;
  OptionButton* const next = group[(place + (forward ? 1 : group.size() - 1)) % group.size()];
  MoveFocus(WindowOf(*next));
  Run([&] { next->UserChoose(); });
  return true;
}

bool FormWindow::Translate(MSG& message) {
  if (dialog_ == nullptr || (message.hwnd != dialog_ && IsChild(dialog_, message.hwnd) == FALSE))
    return false;
  if (message.message == WM_KEYDOWN && ChooseByArrow(message)) return true;
  if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
    // A box of several lines would close the window instead.
    const auto box = std::find_if(controls_.begin(), controls_.end(), [&](const ControlWindow& window) {
      return window.handle() == message.hwnd && window.HasLines();
    });
    if (box != controls_.end()) {
      SendMessageW(dialog_, WM_COMMAND, IDCANCEL, 0);
      return true;
    }
  }
  return IsDialogMessageW(dialog_, &message) != FALSE;
}

}  // namespace quorvel
