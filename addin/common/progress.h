#pragma once

#include <cstdint>
#include <memory>

#include "addin/common/frmDisplay.h"
#include "platform/clock.h"
#include "platform/forms.h"

namespace quorvel {

// The one progress window of the add-in, loaded when first needed.
class Progress {
 public:
  Progress(Forms& forms, const Clock& clock) : forms_(forms), clock_(clock) {}

  // Set by the window's cancel button. A send clears it before it starts and tests it once per row.
  bool CancelRequested = false;

  // Shows the window with this text and lets the host repaint.
  void Show(TextView text);
  // One step of a long loop: `text` followed by `number`, repainted as often as a person can read it, with
  // the cancel button in reach. Lets waiting events run.
  void Step(TextView text, std::int32_t number);
  // Takes the cancel button out of reach, loading the window if needed.
  void HideCancel();
  void Close();

 private:
  frmDisplay& Window();

  Forms& forms_;
  const Clock& clock_;
  std::unique_ptr<frmDisplay> window_;
  bool shown_ = false;
  std::int64_t next_repaint_ = 0;
};

// Closes the progress window at the end of a procedure, however it ends.
class ProgressCloser {
 public:
  explicit ProgressCloser(Progress& progress) : progress_(progress) {}
  ProgressCloser(const ProgressCloser&) = delete;
  ProgressCloser& operator=(const ProgressCloser&) = delete;
  ~ProgressCloser() { progress_.Close(); }

 private:
  Progress& progress_;
};

}  // namespace quorvel
