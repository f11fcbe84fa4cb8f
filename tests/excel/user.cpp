#include "tests/excel/user.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "hosts/excel/wide.h"

namespace quorvel::tests {

namespace {

constexpr UINT kAppeared = WM_APP + 1;
constexpr UINT kStep = WM_APP + 2;
constexpr UINT_PTR kWatchdog = 1;
constexpr UINT kPatience = 30'000;  // milliseconds without any progress

Text ClassOf(HWND window) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return UpperCase(FromWide(name.data()));
}

bool IsUsableWindow(HWND window) {
  return window != nullptr && IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

bool IsField(HWND window) {
  const Text name = ClassOf(window);
  return name == u"EDIT" || name == u"COMBOBOX" || name.starts_with(u"RICHEDIT");
}

// A caption or label as it is read: without access key marks and the colon at its end.
Text Plain(HWND window) {
  Text text = Remove(WindowText(window), u"&");
  if (text.ends_with(u':')) text.pop_back();
  return text;
}

[[noreturn]] void Missing(const char* what, TextView name) {
  throw std::runtime_error(std::string("no usable ") + what + " \"" + ToUtf8(name) + "\"");
}

}  // namespace

Text WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return FromWide(text);
}

std::vector<HWND> Dialog::Children() const {
  std::vector<HWND> children;
  for (HWND child = GetWindow(window_, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (IsWindowVisible(child) != FALSE) children.push_back(child);
  }
  return children;
}

Text Dialog::Title() const {
  return WindowText(window_);
}

Text Dialog::Message() const {
  Text message;
  for (const HWND child : Children()) {
    const bool reading =
        ClassOf(child) == u"EDIT" && (GetWindowLongPtrW(child, GWL_STYLE) & ES_READONLY) != 0;
    if (ClassOf(child) != u"STATIC" && !reading) continue;
    const Text text = WindowText(child);
    if (!text.empty()) message += (message.empty() ? u"" : u"\n") + text;
  }
  return message;
}

std::vector<Text> Dialog::Frames() const {
  std::vector<Text> frames;
  for (const HWND child : Children()) {
    const bool frame =
        ClassOf(child) == u"BUTTON" && (GetWindowLongPtrW(child, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    if (frame) frames.push_back(Plain(child));
  }
  return frames;
}

HWND Dialog::Field(TextView label) const {
  bool labelled = false;
  for (const HWND child : Children()) {
    if (labelled && IsField(child) && IsUsableWindow(child)) return child;
    labelled = labelled || Plain(child) == label;
  }
  Missing("field", label);
}

HWND Dialog::FieldOfClass(const wchar_t* window_class) const {
  const Text wanted = UpperCase(FromWide(window_class));
  for (const HWND child : Children()) {
    if (ClassOf(child) == wanted && IsUsableWindow(child)) return child;
  }
  Missing("field of class", wanted);
}

HWND Dialog::Button(TextView caption) const {
  for (const HWND child : Children()) {
    const bool frame = (GetWindowLongPtrW(child, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    if (ClassOf(child) == u"BUTTON" && !frame && Plain(child) == caption) return child;
  }
  Missing("button", caption);
}

bool Dialog::IsUsable(TextView caption) const {
  return IsUsableWindow(Button(caption));
}

bool Dialog::IsProgress() const {
  return FindWindowExW(window_, nullptr, PROGRESS_CLASSW, nullptr) != nullptr;
}

void Dialog::TypeInto(HWND field, TextView text) const {
  SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
  HWND target = field;
  if (ClassOf(field) == u"COMBOBOX") target = GetWindow(field, GW_CHILD);
  SendMessageW(target, EM_SETSEL, 0, -1);
  SendMessageW(target, WM_CLEAR, 0, 0);
  for (const char16_t unit : text) {
    // A rich text box takes the Enter key itself, not the character that it makes.
    const bool enter = unit == u'\r' && ClassOf(target).starts_with(u"RICHEDIT");
    SendMessageW(target, enter ? WM_KEYDOWN : WM_CHAR, unit, 1);
  }
}

void Dialog::Choose(TextView label, TextView item) const {
  const HWND combo = Field(label);
  const LRESULT index = SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                     reinterpret_cast<LPARAM>(Wide(Text(item))));
  if (index < 0) Missing("item", item);
  SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  SendMessageW(window_, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(combo));
}

void Dialog::Press(TextView caption) const {
  const HWND button = Button(caption);
  if (!IsUsableWindow(button)) Missing("button", caption);
  SendMessageW(button, BM_CLICK, 0, 0);
}

void Dialog::PressKey(WPARAM key) const {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
}

void Dialog::PressAccessKey(char16_t letter) const {
  constexpr LPARAM kAltIsDown = 1 << 29;
  PostMessageW(GetFocus(), WM_SYSCHAR, letter, kAltIsDown);
}

User::User()
    : window_(CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)),
      hook_(SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId())) {
  current = this;
  SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  SetTimer(window_, kWatchdog, kPatience, nullptr);
}

User::~User() {
  UnhookWindowsHookEx(hook_);
  DestroyWindow(window_);
  current = nullptr;
}

void User::Expect(TextView title, std::function<void(const Dialog&)> step) {
  plans_.push_back({Text(title), std::move(step)});
}

void User::ExpectProgress(std::function<void(const Dialog&)> step) {
  progress_plans_.push_back({Text(), std::move(step)});
}

void User::Then(std::function<void()> step) {
  steps_.push_back(std::move(step));
  PostMessageW(window_, kStep, 0, 0);
}

void User::Settle() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

LRESULT CALLBACK User::Hook(int code, WPARAM window, LPARAM details) {
  const HWND target = reinterpret_cast<HWND>(window);
  if (code == HCBT_ACTIVATE && ClassOf(target) == u"#32770" && current->seen_.insert(target).second) {
    PostMessageW(current->window_, kAppeared, window, 0);
  }
  if (code == HCBT_DESTROYWND) current->seen_.erase(target);
  return CallNextHookEx(nullptr, code, window, details);
}

LRESULT CALLBACK User::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case kAppeared:
      SetTimer(window, kWatchdog, kPatience, nullptr);
      current->Appeared(reinterpret_cast<HWND>(first));
      return 0;
    case kStep: {
      const auto step = std::move(current->steps_.front());
      current->steps_.pop_front();
      current->Attempt(step, nullptr);
      return 0;
    }
    case WM_TIMER:
      for (const std::string& problem : current->problems_) std::fprintf(stderr, "%s\n", problem.c_str());
      std::fprintf(stderr, "a dialog waits for a user who has no plan; %zu plans left\n", current->pending());
      std::fflush(stderr);
      std::_Exit(3);
    default:
      return DefWindowProcW(window, message, first, second);
  }
}

void User::Appeared(HWND window) {
  if (IsWindow(window) == FALSE) return;
  const Dialog dialog(window);
  if (dialog.IsProgress()) {
    if (!progress_plans_.empty()) Follow(progress_plans_, dialog);
    return;
  }
  if (plans_.empty() || plans_.front().title != dialog.Title()) {
    problems_.push_back("unexpected dialog \"" + ToUtf8(dialog.Title()) + "\": " + ToUtf8(dialog.Message()));
    SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return;
  }
  Follow(plans_, dialog);
}

void User::Follow(std::deque<Plan>& plans, const Dialog& dialog) {
  const Plan plan = std::move(plans.front());
  plans.pop_front();
  Attempt([&] { plan.step(dialog); }, dialog.window());
}

void User::Attempt(const std::function<void()>& step, HWND window) {
  try {
    step();
  } catch (const std::exception& error) {
    problems_.emplace_back(error.what());
    if (window != nullptr && IsWindow(window) != FALSE) SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
  }
}

}  // namespace quorvel::tests
