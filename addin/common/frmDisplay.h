#pragma once

#include "platform/form.h"

namespace quorvel {

// The progress window: a text, a bar that shows activity, and a cancel button.
class frmDisplay : public Form {
 public:
  // `cancel_requested` is set by the cancel button; it outlives the form.
  explicit frmDisplay(bool& cancel_requested);

  Label lblProgress{*this, "lblProgress", {10, 8, 220, 20}};
  ProgressBar ProgressBar1{*this, "ProgressBar1", {10, 32, 220, 10}};
  Button Cancel_Process{*this, "Cancel_Process", {92, 50, 56, 16}, u"&Cancel", Button::Role::kCancel};
  Timer Timer1{*this, "Timer1"};

 protected:
  void Form_Load() override;
  // Closing the window is pressing its cancel button, where there is one.
  bool Form_QueryUnload() override;

 private:
  void Timer1_Timer();
  void Cancel_Process_Click();

  bool& cancel_requested_;
};

}  // namespace quorvel
