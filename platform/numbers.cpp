#include "platform/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "platform/runtime_error.h"

namespace quorvel {
namespace {

template <typename Integer>
Integer Round(double value) {
  const double whole = RoundHalfEven(value);
  using Limits = std::numeric_limits<Integer>;
  const bool fits = whole >= Limits::min() && whole <= Limits::max();  // false for NaN
  if (!fits) throw Overflow();
  return static_cast<Integer>(whole);
}

template <typename Integer>
Text IntegerToText(Integer value, int base = 10) {
  char buffer[std::numeric_limits<Integer>::digits10 + 3];
  const auto result = std::to_chars(std::begin(buffer), std::end(buffer), value, base);
  return {std::begin(buffer), result.ptr};
}

constexpr int kMostDigits = 15;

// A finite value other than 0, rounded to 15 significant digits: d.ddd * 10^exponent, no trailing zeros.
struct Significant {
  bool is_negative = false;
  std::string digits;
  int exponent = 0;
};

Significant RoundToSignificant(double value) {
  char buffer[32];
  const auto end = std::to_chars(std::begin(buffer), std::end(buffer), std::abs(value),
                                 std::chars_format::scientific, kMostDigits - 1)
                       .ptr;
  constexpr std::size_t kMantissaSize = kMostDigits + 1;  // with the point
  Significant result{value < 0, std::string(1, buffer[0]), 0};
  result.digits.append(buffer + 2, kMostDigits - 1);
  result.digits.erase(result.digits.find_last_not_of('0') + 1);
  const char* const exponent = buffer + kMantissaSize + 1;
  std::from_chars(*exponent == '+' ? exponent + 1 : exponent, end, result.exponent);
  return result;
}

std::string Fixed(const Significant& number) {
  const auto& [is_negative, digits, exponent] = number;
  if (exponent < 0) return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  const auto whole_digits = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() <= whole_digits) return digits + std::string(whole_digits - digits.size(), '0');
  return digits.substr(0, whole_digits) + "." + digits.substr(whole_digits);
}

std::string Scientific(const Significant& number) {
  const auto& [is_negative, digits, exponent] = number;
  std::string result = digits.substr(0, 1);
  if (digits.size() > 1) result.append(".").append(digits, 1);
  const std::string power = std::to_string(std::abs(exponent));
  result.append(exponent < 0 ? "E-" : "E+");
  if (power.size() < 2) result.append("0");
  return result.append(power);
}

}  // namespace

std::int32_t ToLong(double value) {
  return Round<std::int32_t>(value);
}

std::int16_t ToInteger(double value) {
  return Round<std::int16_t>(value);
}

double RoundHalfEven(double value) {
  return value - std::remainder(value, 1.0);
}

Text NumberToText(double value) {
  constexpr double kFirstTooLong = 1e15;
  if (std::abs(value) < kFirstTooLong && value == std::trunc(value)) {
    return IntegerToText(static_cast<std::int64_t>(value));
  }
  if (!std::isfinite(value)) throw Overflow();
  const Significant number = RoundToSignificant(value);
  const int decimals = static_cast<int>(number.digits.size()) - 1 - number.exponent;
  const bool is_fixed = number.exponent < kMostDigits && decimals <= kMostDigits;
  const std::string digits = is_fixed ? Fixed(number) : Scientific(number);
  Text text(number.is_negative ? 1 : 0, u'-');
  return text.append(digits.begin(), digits.end());
}

Text NumberToText(std::int32_t value) {
  return IntegerToText(value);
}

Text Hex(std::int16_t value) {
  Text digits = IntegerToText(static_cast<std::uint16_t>(value), 16);
  return UpperCase(digits);
}

std::int16_t AddInteger(std::int16_t left, std::int16_t right) {
  return Round<std::int16_t>(static_cast<double>(left) + right);
}

}  // namespace quorvel
