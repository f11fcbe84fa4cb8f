#include "addin/common/alert.h"

#include "addin/common/AlertBox.h"

namespace quorvel {

void ShowAlert(Forms& forms, TextView message, int style, TextView title) {
  AlertBox box(message, style, title);
  forms.ShowModal(box);
}

void ShowError(Forms& forms, const RuntimeError& error) {
  ShowAlert(forms, Text(kGeneralError) + Text(kCrLf) + error.description(), kCritical, kErrorTitle);
}

void RunHandler(Forms& forms, const std::function<void()>& handler) {
  try {
    handler();
  } catch (const RuntimeError& error) {
    ShowError(forms, error);
  }
}

}  // namespace quorvel
