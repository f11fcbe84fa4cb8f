#pragma once

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "hosts/excel/win32.h"
#include "platform/text.h"

namespace quorvel::tests {

// A dialog on the screen, operated as a person does: fields are found by the label before them, buttons by
// their caption; text arrives as typed characters. A field or button that is missing, hidden or disabled
// throws std::runtime_error.
class Dialog {
 public:
  explicit Dialog(HWND window) : window_(window) {}

  [[nodiscard]] HWND window() const { return window_; }
  [[nodiscard]] Text Title() const;
  // The texts of all labels and of boxes that are only for reading, a line each.
  [[nodiscard]] Text Message() const;

  // The captions of the frames that can be seen.
  [[nodiscard]] std::vector<Text> Frames() const;

  [[nodiscard]] HWND Field(TextView label) const;
  // The first field of that window class, for fields without a label.
  [[nodiscard]] HWND FieldOfClass(const wchar_t* window_class) const;
  [[nodiscard]] HWND Button(TextView caption) const;
  [[nodiscard]] bool IsUsable(TextView caption) const;
  [[nodiscard]] bool IsProgress() const;

  void Type(TextView label, TextView text) const { TypeInto(Field(label), text); }
  void TypeInto(HWND field, TextView text) const;
  void Choose(TextView label, TextView item) const;
  void Press(TextView caption) const;
  // The dialog's message loop sees these after the current step.
  void PressKey(WPARAM key) const;
  void PressAccessKey(char16_t letter) const;

 private:
  [[nodiscard]] std::vector<HWND> Children() const;

  HWND window_;
};

[[nodiscard]] Text WindowText(HWND window);

// The person at the screen: has a plan of what to do with each dialog as it appears. All on one thread: a
// step runs from the message loop of the dialog that it is for.
class User {
 public:
  User();
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User();

  // The next dialog to appear has this title; then `step` is done with it. A dialog of another title, a
  // dialog without a plan, and a step that throws are noted in problems(), and the dialog is closed by
  // Escape.
  void Expect(TextView title, std::function<void(const Dialog&)> step);
  // The next progress window; those without a plan come and go unheeded.
  void ExpectProgress(std::function<void(const Dialog&)> step);
  // Runs `step` once the messages that wait now have been seen to.
  void Then(std::function<void()> step);
  // Runs messages until none is waiting.
  static void Settle();

  [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }
  // Plans whose dialog never appeared.
  [[nodiscard]] std::size_t pending() const { return plans_.size() + progress_plans_.size(); }

 private:
  struct Plan {
    Text title;  // empty for a progress window
    std::function<void(const Dialog&)> step;
  };

  static LRESULT CALLBACK Hook(int code, WPARAM window, LPARAM details);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  void Appeared(HWND window);
  void Follow(std::deque<Plan>& plans, const Dialog& dialog);
  void Attempt(const std::function<void()>& step, HWND window);

  static inline User* current = nullptr;
  HWND window_;
  HHOOK hook_;
  std::set<HWND> seen_;
  std::deque<Plan> plans_;
  std::deque<Plan> progress_plans_;
  std::deque<std::function<void()>> steps_;
  std::vector<std::string> problems_;
};

}  // namespace quorvel::tests
