#pragma once

#include <functional>

#include "platform/forms.h"
#include "platform/runtime_error.h"
#include "platform/text.h"

namespace quorvel {

// Shows the alert box modally; returns when the user has closed it. `style` is kCritical, kWarning or
// kInformation; any other value shows the warning image.
void ShowAlert(Forms& forms, TextView message, int style, TextView title);

// The add-in's general error message, followed by what went wrong.
void ShowError(Forms& forms, const RuntimeError& error);

// Runs an event handler: a run-time error in it is shown by ShowError and goes no further.
void RunHandler(Forms& forms, const std::function<void()>& handler);

// The general error message itself, and its title.
inline constexpr TextView kGeneralError =
    u"Oops!!! there seems to be some problem. Please reopen excel file if it continues.";
inline constexpr TextView kErrorTitle = u"Error";

// The busy pointer while it lives.
class BusyPointer {
 public:
  explicit BusyPointer(Forms& forms) : forms_(forms) { forms_.SetPointer(Pointer::kBusy); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
  ~BusyPointer() { forms_.SetPointer(Pointer::kDefault); }

 private:
  Forms& forms_;
};

}  // namespace quorvel
