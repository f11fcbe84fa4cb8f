#include "addin/common/progress.h"

#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr std::int64_t kRepaintInterval = 50;  // milliseconds

}  // namespace

frmDisplay& Progress::Window() {
  if (!window_ || !window_->loaded()) {
    window_ = std::make_unique<frmDisplay>(CancelRequested);
    window_->Load();
    shown_ = false;
  }
  return *window_;
}

void Progress::Show(TextView text) {
  frmDisplay& window = Window();
  window.lblProgress.set_caption(text);
  if (!shown_) {
    shown_ = true;
    window.Cancel_Process.set_visible(true);
    forms_.Show(window);
  }
  next_repaint_ = 0;
  forms_.Yield();
}

void Progress::Step(TextView text, std::int32_t number) {
  frmDisplay& window = Window();
  window.Cancel_Process.set_visible(true);
  const std::int64_t now = clock_.Ticks();
  if (now >= next_repaint_) {
    next_repaint_ = now + kRepaintInterval;
    window.lblProgress.set_caption(Text(text) + NumberToText(number));
    if (!shown_) {
      shown_ = true;
      forms_.Show(window);
    }
  }
  forms_.Yield();
}

void Progress::HideCancel() {
  Window().Cancel_Process.set_visible(false);
}

void Progress::Close() {
  window_.reset();
  shown_ = false;
}

}  // namespace quorvel
