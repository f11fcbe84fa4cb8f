#include "send/row_schedule.h"

#include <array>

#include "addin/common/alert.h"
#include "platform/cell_value.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u"SMS Scheduler";
constexpr TextView kPleaseCheck = u"Please check...";

}  // namespace

std::optional<std::int32_t> RowSchedule::Minutes(Sheet& sheet, std::int32_t row) {
  const CellAddress cell{column_, row};
  const Date now = clock_.Now();
  const std::optional<Date> date = ReadDate(sheet.Value(cell), now);
  if (!date) {
    ShowAlert(forms_, u"Invalid Date at " + A1(cell) + Text(kCrLf) + Text(kPleaseCheck), kWarning, kTitle);
    return std::nullopt;
  }
  const std::int32_t minutes = MinutesBetween(now, *date);
  if (minutes > 0) return minutes;
  if (!AcceptsExpired(cell, *date)) return std::nullopt;
  return 0;
}

bool RowSchedule::AcceptsExpired(const CellAddress& cell, Date date) {
  if (expired_accepted_) return true;
  Text question = u"Column " + Text(column_);
  question +=
      u" Contains Expired Date(s). If you continue the messages with expired dates will be fired instantly.";
  question += kCrLf;
  question += u" Do You Wish To Continue?";
  expired_accepted_ = forms_.MsgBox(question, kYesNo | kWarning, kTitle) == Answer::kYes;
  if (!expired_accepted_) {
    Text message = A1(cell) + u" (" + FormatDate(date, u"MM/DD/YYYY hh:mm AM/PM") + u")";
    message += u" contains older date.";
    message += kCrLf;
    message += kPleaseCheck;
    ShowAlert(forms_, message, kWarning, kTitle);
  }
  return expired_accepted_;
}

}  // namespace quorvel
