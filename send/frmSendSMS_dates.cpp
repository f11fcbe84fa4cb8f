#include "platform/numbers.h"
#include "send/frmSendSMS.h"

namespace quorvel {

namespace {

constexpr int kYearsAhead = 2;
constexpr int kMinutesAPart = 15;
constexpr int kMinutesADay = 24 * 60;

Text Number(int value) {
  return NumberToText(std::int32_t{value});
}

int NumberIn(const ComboBox& picker) {
  const double value = Val(picker.text());
  return value >= 0 && value <= 9999 ? static_cast<int>(value) : 0;
}

// Offers `first` to `last`. Keeps what was chosen where it is still on offer.
void Offer(ComboBox& picker, int first, int last) {
  const Text chosen = picker.text();
  picker.Clear();
  for (int value = first; value <= last; ++value) picker.AddItem(Number(value));
  const int kept = picker.Find(chosen);
  picker.set_list_index(kept >= 0 ? kept : 0);
}

}  // namespace

// What is typed stands as it is and narrows what the pickers behind it offer.
void frmSendSMS::WireDates() {
  combo_year.on_click = combo_year.on_change = [this] { FillMonths(); };
  combo_month.on_click = combo_month.on_change = [this] { FillDays(); };
  combo_dd.on_click = combo_dd.on_change = [this] { FillTimes(); };
}

// Begins with the next quarter of an hour that leaves time to finish the form.
void frmSendSMS::FillDates() {
  const DateParts start = Parts(AddMinutes(context_.platform.clock.Now(), 2 * kMinutesAPart));
  Offer(combo_year, start.year, start.year + kYearsAhead);
  combo_month.set_text(Number(start.month));
  combo_dd.set_text(Number(start.day));
  const int part = (start.hour * 60 + start.minute) / kMinutesAPart * kMinutesAPart;
  combo_Times.set_text(FormatDate({part / static_cast<double>(kMinutesADay)}, u"hh:mm AM/PM"));
}

void frmSendSMS::FillMonths() {
  const DateParts now = Parts(context_.platform.clock.Now());
  Offer(combo_month, NumberIn(combo_year) == now.year ? now.month : 1, 12);
  FillDays();
}

void frmSendSMS::FillDays() {
  const DateParts now = Parts(context_.platform.clock.Now());
  const int year = NumberIn(combo_year);
  const int month = NumberIn(combo_month);
  if (month < 1 || month > 12) return;
  const bool this_month = year == now.year && month == now.month;
  Offer(combo_dd, this_month ? now.day : 1, DaysInMonth(year, month));
  FillTimes();
}

void frmSendSMS::FillTimes() {
  const DateParts now = Parts(context_.platform.clock.Now());
  const bool today =
      NumberIn(combo_year) == now.year && NumberIn(combo_month) == now.month && NumberIn(combo_dd) == now.day;
  const int first = today ? ((now.hour * 60 + now.minute) / kMinutesAPart + 1) * kMinutesAPart : 0;
  const Text chosen = combo_Times.text();
  combo_Times.Clear();
  for (int minute = first; minute < kMinutesADay; minute += kMinutesAPart) {
    combo_Times.AddItem(FormatDate({minute / static_cast<double>(kMinutesADay)}, u"hh:mm AM/PM"));
  }
  const int kept = combo_Times.Find(chosen);
  if (kept >= 0) {
    combo_Times.set_list_index(kept);
  } else if (!chosen.empty()) {
    combo_Times.set_text(chosen);
  }
}

}  // namespace quorvel
