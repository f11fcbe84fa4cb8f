#pragma once

#include <cstdint>

#include "hosts/console/terminal.h"
#include "platform/text.h"

namespace quorvel {

// The progress window as one line of the terminal, rewritten ten times a second at most: its text, and how
// fast the rows go by.
class ProgressLine {
 public:
  explicit ProgressLine(const Terminal& terminal) : terminal_(terminal) {}

  [[nodiscard]] bool IsDue(std::int64_t ticks) const { return terminal_.shows_progress() && ticks >= next_; }
  // `text` is the progress window's; `ticks` are milliseconds.
  void Show(TextView text, std::int64_t ticks);
  // Takes the line away, as before a message.
  void Clear();

 private:
  const Terminal& terminal_;
  std::int64_t next_ = 0;
  bool on_show_ = false;
  double first_row_ = 0;
  std::int64_t first_ticks_ = 0;
};

}  // namespace quorvel
