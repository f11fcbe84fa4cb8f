#include <algorithm>
#include <array>
#include <chrono>
#include <vector>

#include "platform/dates.h"
#include "platform/month_names.h"
#include "platform/numbers.h"

namespace quorvel {
namespace {

constexpr std::array<TextView, 7> kWeekdays = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                               u"Thursday", u"Friday", u"Saturday"};

enum class Field {
  kLiteral,
  kDay,
  kWeekdayShort,
  kWeekday,
  kMonth,
  kMonthShort,
  kMonthName,
  kYearShort,
  kYear,
  kHour,
  kMinute,
  kSecond,
  kHalf
};

// A piece of a pattern: a field and the least count of its digits, or for kLiteral and kHalf the text behind
// it.
struct Piece {
  Field field = Field::kLiteral;
  std::size_t digits = 0;
  TextView text;
};

struct Symbol {
  char16_t letter;
  unsigned count;
  Field field;
  unsigned digits;
};

constexpr Symbol kSymbols[] = {
    {u'd', 1, Field::kDay, 1},        {u'd', 2, Field::kDay, 2},       {u'd', 3, Field::kWeekdayShort, 0},
    {u'd', 4, Field::kWeekday, 0},    {u'm', 1, Field::kMonth, 1},     {u'm', 2, Field::kMonth, 2},
    {u'm', 3, Field::kMonthShort, 0}, {u'm', 4, Field::kMonthName, 0}, {u'y', 2, Field::kYearShort, 2},
    {u'y', 4, Field::kYear, 4},       {u'h', 1, Field::kHour, 1},      {u'h', 2, Field::kHour, 2},
    {u'n', 1, Field::kMinute, 1},     {u'n', 2, Field::kMinute, 2},    {u's', 1, Field::kSecond, 1},
    {u's', 2, Field::kSecond, 2},
};

constexpr char16_t LowerLetter(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

// Takes the piece that a pattern, which is not empty, begins with.
Piece TakePiece(TextView& pattern) {
  const auto take = [&pattern](std::size_t count) {
    const TextView taken = pattern.substr(0, count);
    pattern.remove_prefix(taken.size());
    return taken;
  };
  constexpr TextView kHalf = u"AM/PM";
  const char16_t letter = LowerLetter(pattern.front());
  if (letter == u'a' && UpperCase(pattern.substr(0, kHalf.size())) == kHalf)
    return {Field::kHalf, 0, take(kHalf.size())};
  if (pattern.front() == u'\\') {
    take(1);
    return {Field::kLiteral, 0, take(1)};
  }
  if (pattern.front() == u'"') {
    take(1);
    const Piece quoted{Field::kLiteral, 0, take(pattern.find(u'"'))};
    take(1);
    return quoted;
  }
  const auto end =
      std::ranges::find_if_not(pattern, [letter](char16_t unit) { return LowerLetter(unit) == letter; });
  const TextView run = take(static_cast<std::size_t>(end - pattern.begin()));
  const auto* const symbol = std::ranges::find_if(kSymbols, [&](const Symbol& candidate) {
    return candidate.letter == letter && candidate.count == run.size();
  });
  if (symbol == std::end(kSymbols)) return {Field::kLiteral, 0, run};
  return {symbol->field, symbol->digits, {}};
}

std::vector<Piece> ReadPattern(TextView pattern) {
  std::vector<Piece> pieces;
  Field last = Field::kLiteral;
  while (!pattern.empty()) {
    Piece piece = TakePiece(pattern);
    if (piece.field == Field::kMonth && last == Field::kHour) piece.field = Field::kMinute;
    if (piece.field != Field::kLiteral) last = piece.field;
    pieces.push_back(piece);
  }
  return pieces;
}

std::size_t Weekday(const DateParts& parts) {
  const std::chrono::year_month_day calendar{std::chrono::year(parts.year),
                                             std::chrono::month(static_cast<unsigned>(parts.month)),
                                             std::chrono::day(static_cast<unsigned>(parts.day))};
  return std::chrono::weekday(calendar).c_encoding();
}

void AppendNumber(Text& text, int value, std::size_t digits) {
  const Text number = NumberToText(value);
  if (number.size() < digits) text.append(digits - number.size(), u'0');
  text += number;
}

int HourOfHalf(int hour) {
  return hour % 12 == 0 ? 12 : hour % 12;
}

void AppendPiece(Text& text, const Piece& piece, const DateParts& parts, bool has_halves) {
  constexpr std::size_t kShortName = 3;
  constexpr std::size_t kHalfSize = 2;
  constexpr std::size_t kAfternoon = 3;  // where "PM" stands in "AM/PM"
  const TextView month = kMonthNames[static_cast<std::size_t>(parts.month - 1)];
  switch (piece.field) {
    case Field::kLiteral:
      text += piece.text;
      return;
    case Field::kDay:
      AppendNumber(text, parts.day, piece.digits);
      return;
    case Field::kWeekdayShort:
      text += kWeekdays[Weekday(parts)].substr(0, kShortName);
      return;
    case Field::kWeekday:
      text += kWeekdays[Weekday(parts)];
      return;
    case Field::kMonth:
      AppendNumber(text, parts.month, piece.digits);
      return;
    case Field::kMonthShort:
      text += month.substr(0, kShortName);
      return;
    case Field::kMonthName:
      text += month;
      return;
    case Field::kYearShort:
      AppendNumber(text, parts.year % 100, piece.digits);
      return;
    case Field::kYear:
      AppendNumber(text, parts.year, piece.digits);
      return;
    case Field::kHour:
      AppendNumber(text, has_halves ? HourOfHalf(parts.hour) : parts.hour, piece.digits);
      return;
    case Field::kMinute:
      AppendNumber(text, parts.minute, piece.digits);
      return;
    case Field::kSecond:
      AppendNumber(text, parts.second, piece.digits);
      return;
    case Field::kHalf:
      text += piece.text.substr(parts.hour < 12 ? 0 : kAfternoon, kHalfSize);
      return;
  }
}

}  // namespace

Text FormatDate(Date date, TextView pattern) {
  const DateParts parts = Parts(date);
  const std::vector<Piece> pieces = ReadPattern(pattern);
  const bool has_halves = std::ranges::find(pieces, Field::kHalf, &Piece::field) != pieces.end();
  Text text;
  for (const Piece& piece : pieces) AppendPiece(text, piece, parts, has_halves);
  return text;
}

Text DateToText(Date date) {
  constexpr TextView kDay = u"m/d/yyyy";
  constexpr TextView kTime = u"h:nn:ss AM/PM";
  const DateParts parts = Parts(date);
  const bool has_time = parts.hour != 0 || parts.minute != 0 || parts.second != 0;
  const DateParts day_zero;
  const bool is_day_zero =
      parts.year == day_zero.year && parts.month == day_zero.month && parts.day == day_zero.day;
  if (is_day_zero) return FormatDate(date, kTime);
  if (!has_time) return FormatDate(date, kDay);
  return FormatDate(date, Text(kDay) + u" " + Text(kTime));
}

}  // namespace quorvel
