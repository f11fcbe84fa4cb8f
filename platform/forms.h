#pragma once

#include "platform/form.h"
#include "platform/text.h"

namespace quorvel {

// Buttons, icon and default button of a message box, added up; the values of the platform's MsgBox.
inline constexpr int kOkOnly = 0;
inline constexpr int kOkCancel = 1;
inline constexpr int kYesNo = 4;
inline constexpr int kCritical = 16;
inline constexpr int kWarning = 48;
inline constexpr int kInformation = 64;

enum class Answer { kOk = 1, kCancel = 2, kYes = 6, kNo = 7 };

enum class Pointer { kDefault, kBusy };

// The host's window system. Everything happens on its one user-interface thread.
class Forms {
 public:
  virtual ~Forms() = default;

  // Loads the form if needed and shows it, returning at once. It is shown until it is unloaded.
  virtual void Show(Form& form) = 0;
  // Loads the form if needed, shows it over the window in front and returns when it is unloaded.
  virtual void ShowModal(Form& form) = 0;

  // The host's own message box. Closing it by its frame gives kCancel when there is a Cancel button, kOk when
  // OK is the only one.
  virtual Answer MsgBox(TextView prompt, int style, TextView title) = 0;
  // The text that the user typed; empty when cancelled.
  virtual Text InputBox(TextView prompt, TextView title, TextView initial) = 0;

  virtual void SetPointer(Pointer pointer) = 0;

  // Lets waiting events run: repaints, clicks, timers. Called once per row of a send, so it costs next to
  // nothing when no event is waiting.
  virtual void Yield() = 0;
};

}  // namespace quorvel
