#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "platform/dates.h"
#include "platform/month_names.h"

namespace quorvel {
namespace {

constexpr TextView kBlanks = u" \t\n\v\f\r\u3000";
constexpr TextView kSeparators = u"/-,.:";
constexpr char16_t kBlank = u' ';
constexpr char16_t kNothing = u'\0';

// A number, a month by name, or AM or PM, with the separator in front of it.
struct Item {
  enum class Kind { kNumber, kMonth, kAm, kPm };

  Kind kind = Kind::kNumber;
  int value = 0;  // of a number, or the month from 1
  char16_t separator = kNothing;

  [[nodiscard]] bool is_number() const { return kind == Kind::kNumber; }
  [[nodiscard]] bool is_marker() const { return kind == Kind::kAm || kind == Kind::kPm; }
  [[nodiscard]] bool follows_time_separator() const { return separator == u':' || separator == u'.'; }
  [[nodiscard]] bool stands_apart() const { return separator == kBlank || separator == u','; }
};

using Items = std::span<const Item>;

constexpr bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

constexpr bool IsLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

// Takes the units that satisfy `is_part` off the front of `rest`.
template <typename Predicate>
TextView TakeWhile(TextView& rest, Predicate is_part) {
  const auto end = static_cast<std::size_t>(std::ranges::find_if_not(rest, is_part) - rest.begin());
  const TextView taken = rest.substr(0, end);
  rest.remove_prefix(end);
  return taken;
}

// The one separator in front of the next item: blanks count only where nothing else stands.
char16_t TakeSeparator(TextView& rest) {
  const auto is_blank = [](char16_t unit) { return kBlanks.find(unit) != TextView::npos; };
  char16_t separator = TakeWhile(rest, is_blank).empty() ? kNothing : kBlank;
  if (!rest.empty() && kSeparators.find(rest.front()) != TextView::npos) {
    separator = rest.front();
    rest.remove_prefix(1);
    TakeWhile(rest, is_blank);
  }
  return separator;
}

std::optional<Item> ReadNumber(TextView digits) {
  constexpr int kMost = 9999;
  int value = 0;
  for (const char16_t digit : digits) {
    value = value * 10 + (digit - u'0');
    if (value > kMost) return std::nullopt;
  }
  return Item{Item::Kind::kNumber, value};
}

std::optional<Item> ReadWord(TextView letters) {
  const Text word = UpperCase(letters);
  if (word == u"AM" || word == u"A") return Item{Item::Kind::kAm};
  if (word == u"PM" || word == u"P") return Item{Item::Kind::kPm};
  const auto* const month = std::ranges::find_if(kMonthNames, [&word](TextView name) {
    return word == UpperCase(name) || word == UpperCase(name.substr(0, 3));
  });
  if (month == kMonthNames.end()) return std::nullopt;
  return Item{Item::Kind::kMonth, static_cast<int>(month - kMonthNames.begin()) + 1};
}

// The items of `text`; none at all when it holds anything else or a separator too many.
std::vector<Item> ReadItems(TextView text) {
  std::vector<Item> items;
  char16_t separator = TakeSeparator(text);
  if (separator != kBlank && separator != kNothing) return {};
  while (!text.empty()) {
    std::optional<Item> item;
    if (IsDigit(text.front())) {
      item = ReadNumber(TakeWhile(text, IsDigit));
    } else {
      item = ReadWord(TakeWhile(text, IsLetter));
    }
    if (!item) return {};
    item->separator = separator;
    items.push_back(*item);
    separator = TakeSeparator(text);
  }
  if (separator != kBlank && separator != kNothing) return {};
  return items;
}

// How many items from the front of `items` are a time of day: numbers joined by ":" or ".", AM or PM behind
// them; a number alone only with AM or PM. 0 when they are none.
std::size_t TimeLength(Items items) {
  if (items.empty() || !items.front().is_number()) return 0;
  std::size_t length = 1;
  while (length < items.size() && items[length].is_number() && items[length].follows_time_separator())
    ++length;
  const bool has_marker = length < items.size() && items[length].is_marker() &&
                          (items[length].separator == kBlank || items[length].separator == kNothing);
  if (has_marker) return length + 1;
  return length == 1 ? 0 : length;
}

// An hour above 12 makes AM and PM meaningless; they are passed over then.
int HourOfDay(int hour, Item::Kind marker) {
  if (hour > 12) return hour;
  return hour % 12 + (marker == Item::Kind::kPm ? 12 : 0);
}

// Sets the time of day in `parts`. Whether `items` has at most three numbers and is not a floating point
// zero.
bool ReadTime(Items items, DateParts& parts) {
  const bool has_marker = items.back().is_marker();
  const Items numbers = items.first(items.size() - (has_marker ? 1 : 0));
  if (numbers.size() > 3) return false;
  const bool is_zero = std::ranges::all_of(numbers, [](const Item& item) { return item.value == 0; });
  if (is_zero && numbers.size() == 2 && numbers[1].separator == u'.') return false;
  int* const targets[] = {&parts.hour, &parts.minute, &parts.second};
  for (std::size_t i = 0; i < numbers.size(); ++i) *targets[i] = numbers[i].value;
  if (has_marker) parts.hour = HourOfDay(parts.hour, items.back().kind);
  return true;
}

// The orders in which numbers are tried as year, month and day, the first that makes a date winning; by the
// count of numbers, without and with a month by name. A day left out is the first, a year left out the
// current one.
struct Orders {
  std::size_t count = 0;
  bool has_name = false;
  std::array<std::string_view, 4> tried;
};

constexpr Orders kOrders[] = {
    {2, false, {"md", "dm", "my", "ym"}},
    {3, false, {"mdy", "ymd", "dmy", "ydm"}},
    {1, true, {"d", "y"}},
    {2, true, {"dy", "yd"}},
};

constexpr int FullYear(int year) {
  if (year < 30) return 2000 + year;
  return year < 100 ? 1900 + year : year;
}

std::optional<Date> MakeInOrder(std::string_view order, Items numbers, DateParts parts) {
  parts.day = 1;
  for (std::size_t i = 0; i < order.size(); ++i) {
    const int value = numbers[i].value;
    if (order[i] == 'y') parts.year = FullYear(value);
    if (order[i] == 'm') parts.month = value;
    if (order[i] == 'd') parts.day = value;
  }
  return MakeDate(parts);
}

// The date that `items`, numbers and at most one month by name, give to the time of day in `parts`.
std::optional<Date> ReadDay(std::vector<Item> items, DateParts parts) {
  const auto named = std::ranges::find(items, Item::Kind::kMonth, &Item::kind);
  const bool has_name = named != items.end();
  if (has_name) {
    parts.month = named->value;
    items.erase(named);
  }
  if (!std::ranges::all_of(items, &Item::is_number)) return std::nullopt;
  const auto* const orders = std::ranges::find_if(kOrders, [&](const Orders& candidate) {
    return candidate.count == items.size() && candidate.has_name == has_name;
  });
  if (orders == std::end(kOrders)) return std::nullopt;
  for (const std::string_view order : orders->tried) {
    if (order.empty()) break;
    if (const auto date = MakeInOrder(order, items, parts)) return date;
  }
  return std::nullopt;
}

// Whether the items of a day are joined by "/", "-", "," or blanks, and stand apart from a time in front of
// them.
bool IsJoinedAsDay(Items items, bool time_in_front) {
  if (time_in_front && !items.front().stands_apart()) return false;
  return std::ranges::none_of(items, &Item::follows_time_separator);
}

}  // namespace

std::optional<Date> ParseDate(TextView text, Date today) {
  const std::vector<Item> read = ReadItems(text);
  Items rest = read;
  if (rest.empty()) return std::nullopt;

  std::size_t time_begin = 0;
  while (time_begin < rest.size() && TimeLength(rest.subspan(time_begin)) == 0) ++time_begin;
  const Items time = rest.subspan(time_begin, TimeLength(rest.subspan(time_begin)));
  DateParts parts;
  if (!time.empty() && !ReadTime(time, parts)) return std::nullopt;
  if (time.size() == rest.size()) return MakeDate(parts);

  const Items behind = rest.subspan(time_begin + time.size());
  if (time_begin > 0 && !behind.empty()) return std::nullopt;  // a time inside a date
  if (time_begin > 0 && !time.empty() && !time.front().stands_apart()) return std::nullopt;
  const Items day = time_begin > 0 ? rest.first(time_begin) : behind;
  if (!IsJoinedAsDay(day, time_begin == 0)) return std::nullopt;
  parts.year = Parts(today).year;
  return ReadDay({day.begin(), day.end()}, parts);
}

}  // namespace quorvel
