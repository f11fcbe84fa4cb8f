#include "hosts/excel/win32_forms.h"

#include <algorithm>
#include <utility>

#include "hosts/excel/input_form.h"
#include "hosts/excel/reading_order.h"
#include "hosts/excel/wide.h"
#include "hosts/excel/window_scope.h"

namespace quorvel {

namespace {

// Milliseconds. A Yield repaints 20 times a second at most, counted so that a few repaints may follow one
// another at once: the last text before a long wait is always shown.
constexpr ULONGLONG kRepaintInterval = 50;
constexpr ULONGLONG kMostBudget = 4 * kRepaintInterval;
// How long an event may wait in a tight loop of Yields; asking the system for events is not free.
constexpr ULONGLONG kPollInterval = 10;
constexpr int kMostMessages = 200;  // of one Yield, so that a busy host cannot hold up the caller

}  // namespace

std::shared_ptr<FormWindow> Win32Forms::Open(Form& form) {
  std::erase_if(open_, [](const auto& window) { return window->handle() == nullptr; });
  auto window = std::make_shared<FormWindow>(form, Owner(), state_);
  open_.push_back(window);
  return window;
}

void Win32Forms::Show(Form& form) {
  form.Load();
  if (!form.loaded()) return;
  Flush();
  for (const auto& window : open_) {
    if (window->Shows(form)) return window->Show();
  }
  Open(form)->Show();
}

void Win32Forms::ShowModal(Form& form) {
  form.Load();
  if (!form.loaded()) return;
  Flush();
  const WindowScope scope(Owner());
  const auto window = Open(form);
  modal_.push_back(window);
  window->Show();
  try {
    RunUntilUnloaded(form);
  } catch (...) {
    modal_.pop_back();
    form.Unload();
    throw;
  }
  modal_.pop_back();
}

void Win32Forms::RunUntilUnloaded(Form& form) {
  while (form.loaded()) {
    Flush();
    MSG message{};
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
      PostQuitMessage(static_cast<int>(message.wParam));  // for the host's own loop
      return form.Unload();
    }
    Dispatch(message);
  }
}

void Win32Forms::Dispatch(MSG& message) {
  const auto windows = open_;  // handlers open and close others
  bool done = false;
  for (const auto& window : windows) done = done || window->Translate(message);
  if (!done) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (state_.failure) std::rethrow_exception(std::exchange(state_.failure, nullptr));
}

void Win32Forms::Flush() {
  const auto windows = open_;
  for (const auto& window : windows) window->Flush();
}

bool Win32Forms::FlushWithinBudget(ULONGLONG now) {
  repaint_budget_ = std::min(repaint_budget_ + (now - std::exchange(budgeted_, now)), kMostBudget);
  const bool changed =
      std::any_of(open_.begin(), open_.end(), [](const auto& window) { return window->HasChanges(); });
  if (!changed || repaint_budget_ < kRepaintInterval) return false;
  repaint_budget_ -= kRepaintInterval;
  Flush();
  return true;
}

void Win32Forms::Yield() {
  const ULONGLONG now = GetTickCount64();
  if (!FlushWithinBudget(now) && now - polled_ < kPollInterval) return;
  polled_ = now;
  MSG message{};
  for (int count = 0; count < kMostMessages && HIWORD(GetQueueStatus(QS_ALLINPUT)) != 0; ++count) {
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) return;
    if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
    Dispatch(message);
  }
}

HWND Win32Forms::Owner() const {
  for (auto modal = modal_.rbegin(); modal != modal_.rend(); ++modal) {
    const auto window = modal->lock();
    if (window && window->handle() != nullptr) return window->handle();
  }
  return host_window_();
}

// The window that takes input now.
HWND Win32Forms::Front() const {
  for (auto window = open_.rbegin(); window != open_.rend(); ++window) {
    if ((*window)->handle() != nullptr && IsWindowVisible((*window)->handle()) != FALSE)
      return (*window)->handle();
  }
  return host_window_();
}

Answer Win32Forms::MsgBox(TextView prompt, int style, TextView title) {
  Flush();
  const Text text(prompt);
  const HWND owner = Front();
  const WindowScope scope(owner);
  const InputBlock block(owner);
  const UINT direction = StartsRightToLeft(text) ? MB_RTLREADING | MB_RIGHT : 0;
  const int answer = MessageBoxW(owner, Wide(text), Wide(Text(title)),
                                 static_cast<UINT>(style) | direction | MB_SETFOREGROUND);
  const int buttons = style % 16;
  if (buttons == kOkOnly) return Answer::kOk;  // however it was closed
  // A question that could not be shown is not agreed to.
  if (answer == 0) return buttons == kYesNo ? Answer::kNo : Answer::kCancel;
  return static_cast<Answer>(answer);
}

Text Win32Forms::InputBox(TextView prompt, TextView title, TextView initial) {
  InputForm form(prompt, title, initial);
  ShowModal(form);
  return form.answer();
}

void Win32Forms::SetPointer(Pointer pointer) {
  state_.busy = pointer == Pointer::kBusy;
  SetCursor(LoadCursorW(nullptr, state_.busy ? IDC_WAIT : IDC_ARROW));
}

}  // namespace quorvel
