#include "hosts/excel/form_window.h"

#include <algorithm>
#include <utility>

#include "hosts/excel/automation_error.h"
#include "hosts/excel/wide.h"
#include "hosts/excel/window_scope.h"

namespace quorvel {

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_3DLOOK | WS_CLIPCHILDREN;
constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME;

// A dialog without controls: they are made from the form.
struct EmptyDialog {
  DLGTEMPLATE header{kStyle, kExtendedStyle, 0, 0, 0, 0, 0};
  WORD menu = 0;
  WORD window_class = 0;
  WORD title = 0;
};

// The area that the monitor under a window leaves for windows.
RECT WorkArea(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

// In the middle of `around`, within `area`.
LONG Centred(LONG from, LONG to, LONG size, LONG area_from, LONG area_to) {
  return std::max(area_from, std::min((from + to - size) / 2, area_to - size));
}

constexpr unsigned Bit(Property property) {
  return 1U << static_cast<unsigned>(property);
}

// In the order in which they are shown: the items before the choice, the text before its selection.
constexpr Property kShowOrder[] = {Property::kCaption,   Property::kBounds, Property::kItems,
                                   Property::kListIndex, Property::kText,   Property::kSelectAll,
                                   Property::kValue,     Property::kTimer};

}  // namespace

FormWindow::FormWindow(Form& form, HWND owner, FormsState& state)
    : form_(form), state_(state), owner_(owner) {
  const WindowScope scope(owner);
  const EmptyDialog empty;
  dialog_ = CreateDialogIndirectParamW(ThisModule(), &empty.header, owner, DialogProcedure,
                                       reinterpret_cast<LPARAM>(this));
  if (dialog_ == nullptr) throw ErrorOfResult(HRESULT_FROM_WIN32(GetLastError()));
  metrics_ = std::make_unique<DialogMetrics>(DpiOf(dialog_));
  SetWindowTextW(dialog_, Wide(form.caption()));
  CreateControls();
  Place(nullptr);
  form.AttachView(this);
}

FormWindow::~FormWindow() {
  if (dialog_ == nullptr) return;
  form_.AttachView(nullptr);
  Closed();
}

void FormWindow::CreateControls() {
  for (Control* control : form_.controls()) {
    controls_.emplace_back(*control, dialog_, kFirstId + static_cast<int>(controls_.size()));
    changed_.push_back(~Bit(Property::kSelectAll));
    const bool is_default = control->kind() == ControlKind::kButton &&
                            static_cast<Button*>(control)->role() == Button::Role::kDefault;
    if (is_default) SendMessageW(dialog_, DM_SETDEFID, changed_.size() - 1 + kFirstId, 0);
    if (control->kind() == ControlKind::kTextBox || control->kind() == ControlKind::kOptionButton) {
      SetWindowSubclass(controls_.back().handle(), ControlProcedure, changed_.size() - 1,
                        reinterpret_cast<DWORD_PTR>(this));
    }
  }
  any_changed_ = true;
}

void FormWindow::Place(const RECT* suggested) {
  const SIZE size = metrics_->WindowSize(form_.width(), form_.height(), kStyle, kExtendedStyle);
  RECT around{};
  const RECT area = WorkArea(owner_ != nullptr ? owner_ : dialog_);
  if (owner_ == nullptr || IsIconic(owner_) != FALSE || GetWindowRect(owner_, &around) == FALSE)
    around = area;
  const LONG x = suggested != nullptr ? suggested->left
                                      : Centred(around.left, around.right, size.cx, area.left, area.right);
  const LONG y = suggested != nullptr ? suggested->top
                                      : Centred(around.top, around.bottom, size.cy, area.top, area.bottom);
  SetWindowPos(dialog_, nullptr, static_cast<int>(x), static_cast<int>(y), static_cast<int>(size.cx),
               static_cast<int>(size.cy), SWP_NOZORDER | SWP_NOACTIVATE);
  for (ControlWindow& window : controls_) window.Place(*metrics_);
}

void FormWindow::Show() {
  Flush();
  if (dialog_ == nullptr) return;
  if (!block_) block_.emplace(dialog_);
  if (focus_ == nullptr) focus_ = FirstFocus();
  ShowWindow(dialog_, SW_SHOW);
  SetActiveWindow(dialog_);
  RedrawWindow(dialog_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

HWND FormWindow::FirstFocus() const {
  const Control* const active = form_.active_control();
  if (active != nullptr && active->usable()) return WindowOf(*active);
  for (const ControlWindow& window : controls_) {
    const bool stop =
        window.handle() != nullptr && (GetWindowLongPtrW(window.handle(), GWL_STYLE) & WS_TABSTOP) != 0;
    const bool reading = window.control().kind() == ControlKind::kTextBox &&
                         static_cast<const TextBox&>(window.control()).read_only();
    if (stop && !reading && window.control().usable()) return window.handle();
  }
  return nullptr;
}

HWND FormWindow::WindowOf(const Control& control) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const ControlWindow& window) { return &window.control() == &control; });
  return found == controls_.end() ? nullptr : found->handle();
}

void FormWindow::Flush() {
  if (dialog_ == nullptr || !std::exchange(any_changed_, false)) return;
  showing_ = true;
  constexpr unsigned kReach = Bit(Property::kVisible) | Bit(Property::kEnabled);
  bool reach_changed = false;
  for (std::size_t index = 0; index < controls_.size(); ++index) {
    const unsigned changed = std::exchange(changed_[index], 0U);
    ControlWindow& window = controls_[index];
    reach_changed = reach_changed || (changed & kReach) != 0;
    for (const Property property : kShowOrder) {
      if ((changed & Bit(property)) != 0 && window.CanShow(property)) window.Show(property, *metrics_);
    }
  }
  if (reach_changed) {
    for (const ControlWindow& window : controls_) window.ShowState();
  }
  showing_ = false;
}

void FormWindow::ControlChanged(const Control& control, Property property) {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const ControlWindow& window) { return &window.control() == &control; });
  if (found == controls_.end()) return;
  changed_[static_cast<std::size_t>(found - controls_.begin())] |= Bit(property);
  any_changed_ = true;
}

void FormWindow::FocusMoved(const Control& control) {
  Flush();  // it may have become visible or enabled just now
  MoveFocus(WindowOf(control));
}

void FormWindow::MoveFocus(HWND window) {
  if (GetActiveWindow() != dialog_) {
    focus_ = window;
  } else if (in_focus_event_) {
    PostMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
  } else {
    SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
  }
}

void FormWindow::Release() {
  block_.reset();
  for (const ControlWindow& window : controls_) window.Release();
}

void FormWindow::Closed() {
  const HWND dialog = std::exchange(dialog_, nullptr);
  if (dialog == nullptr) return;
  SetWindowLongPtrW(dialog, DWLP_USER, 0);
  Release();  // before the window goes, so that the next one in line becomes active
  DestroyWindow(dialog);
}

}  // namespace quorvel
