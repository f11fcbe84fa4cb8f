#include "hosts/console/progress_line.h"

#include <algorithm>

#include "hosts/console/output.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr std::int64_t kInterval = 100;  // milliseconds

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// The row number that a text ends in, 0 for none.
double RowIn(TextView text) {
  const auto digits =
      static_cast<std::size_t>(std::find_if_not(text.rbegin(), text.rend(), IsDigit) - text.rbegin());
  return Val(text.substr(text.size() - digits));
}

}  // namespace

void ProgressLine::Show(TextView text, std::int64_t ticks) {
  next_ = ticks + kInterval;
  on_show_ = true;
  const double row = RowIn(text);
  if (row <= first_row_ || first_row_ == 0) {
    first_row_ = row;
    first_ticks_ = ticks;
  }
  std::string line = Printable(Replace(text, kCrLf, u" - "));
  const std::int64_t elapsed = ticks - first_ticks_;
  if (row > first_row_ && elapsed > 0) {
    const double rate = RoundHalfEven((row - first_row_) * 1000 / static_cast<double>(elapsed));
    line += " (" + ToUtf8(NumberToText(rate)) + " rows/s)";
  }
  terminal_.ShowProgress(line);
}

void ProgressLine::Clear() {
  if (!on_show_) return;
  on_show_ = false;
  first_row_ = 0;
  terminal_.ShowProgress("");
}

}  // namespace quorvel
