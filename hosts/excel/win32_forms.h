#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/excel/form_window.h"
#include "platform/forms.h"

namespace quorvel {

// Forms as native dialogs, owned by the host's window and modal to all windows of its thread. A run-time
// error that leaves a form's event handler comes out of the ShowModal or Yield that ran the handler.
class Win32Forms : public Forms {
 public:
  // `host_window` is asked at each dialog that has no other to belong to; it may give null.
  explicit Win32Forms(std::function<HWND()> host_window) : host_window_(std::move(host_window)) {}

  void Show(Form& form) override;
  void ShowModal(Form& form) override;
  Answer MsgBox(TextView prompt, int style, TextView title) override;
  Text InputBox(TextView prompt, TextView title, TextView initial) override;
  void SetPointer(Pointer pointer) override;
  void Yield() override;

 private:
  std::shared_ptr<FormWindow> Open(Form& form);
  void RunUntilUnloaded(Form& form);
  void Dispatch(MSG& message);
  void Flush();
  bool FlushWithinBudget(ULONGLONG now);
  [[nodiscard]] HWND Owner() const;
  [[nodiscard]] HWND Front() const;

  std::function<HWND()> host_window_;
  std::vector<std::weak_ptr<FormWindow>> modal_;  // innermost last
  std::vector<std::shared_ptr<FormWindow>> open_;
  FormsState state_;
  // By the system's millisecond counter.
  ULONGLONG polled_ = 0;
  ULONGLONG budgeted_ = 0;
  ULONGLONG repaint_budget_ = 0;
};

}  // namespace quorvel
