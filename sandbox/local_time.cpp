#include "sandbox/local_time.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <ctime>

namespace quorvel::sandbox {
namespace {

namespace chrono = std::chrono;

// The number made of all of `text`, digits only.
std::optional<unsigned> Digits(std::string_view text) {
  unsigned value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

std::optional<chrono::local_days> Day(std::string_view year, std::string_view month, std::string_view day) {
  const auto y = Digits(year);
  const auto m = Digits(month);
  const auto d = Digits(day);
  if (!y || !m || !d) return std::nullopt;
  const chrono::year_month_day date{chrono::year(static_cast<int>(*y)), chrono::month(*m), chrono::day(*d)};
  if (!date.ok()) return std::nullopt;
  return chrono::local_days(date);
}

// Whether `text` has the form of `pattern`, in which 0 stands for a digit and the rest for itself.
bool HasForm(std::string_view text, std::string_view pattern) {
  return std::ranges::equal(text, pattern,
                            [](char c, char p) { return p == '0' ? c >= '0' && c <= '9' : c == p; });
}

}  // namespace

LocalTime SystemLocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  const chrono::year_month_day date{chrono::year(parts.tm_year + 1900),
                                    chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
                                    chrono::day(static_cast<unsigned>(parts.tm_mday))};
  return chrono::local_days(date) + chrono::hours(parts.tm_hour) + chrono::minutes(parts.tm_min) +
         chrono::seconds(parts.tm_sec);
}

std::string ToIso(LocalTime time) {
  const auto day = chrono::floor<chrono::days>(time);
  const chrono::year_month_day date(day);
  const chrono::hh_mm_ss clock(time - day);
  char text[64];
  const int length =
      std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                    static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                    static_cast<int>(clock.seconds().count()));
  return {text, static_cast<std::size_t>(length)};
}

std::optional<LocalTime> FromIso(std::string_view text) {
  if (!HasForm(text, "0000-00-00T00:00:00")) return std::nullopt;
  const auto day = Day(text.substr(0, 4), text.substr(5, 2), text.substr(8, 2));
  const auto hour = Digits(text.substr(11, 2));
  const auto minute = Digits(text.substr(14, 2));
  const auto second = Digits(text.substr(17, 2));
  if (!day || !hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  return *day + chrono::hours(*hour) + chrono::minutes(*minute) + chrono::seconds(*second);
}

std::optional<chrono::local_days> FromCompactDay(std::string_view text) {
  if (!HasForm(text, "00000000")) return std::nullopt;
  return Day(text.substr(0, 4), text.substr(4, 2), text.substr(6, 2));
}

}  // namespace quorvel::sandbox
