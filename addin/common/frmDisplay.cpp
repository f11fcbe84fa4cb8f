#include "addin/common/frmDisplay.h"

namespace quorvel {

frmDisplay::frmDisplay(bool& cancel_requested)
    : Form("frmDisplay", u"SMS", 240, 74), cancel_requested_(cancel_requested) {
  Timer1.on_timer = [this] { Timer1_Timer(); };
  Cancel_Process.on_click = [this] { Cancel_Process_Click(); };
}

void frmDisplay::Form_Load() {
  Timer1.set_interval(1000);
}

bool frmDisplay::Form_QueryUnload() {
  Cancel_Process.UserPress();
  return false;
}

void frmDisplay::Timer1_Timer() {
  const int next = ProgressBar1.value() + 1;
  ProgressBar1.set_value(next >= 100 ? 1 : next);
}

void frmDisplay::Cancel_Process_Click() {
  cancel_requested_ = true;
  Timer1.set_interval(0);
  Unload();
}

}  // namespace quorvel
