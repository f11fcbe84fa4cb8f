#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// What may stand between the digits of a number without ending it, and which digits count.
struct Grammar {
  TextView in_whole_part;
  TextView elsewhere;
  bool full_width_digits;
};

constexpr Grammar kVal{u" \t\n", u" \t\n", false};
// Separators of thousands are not checked for their place.
constexpr Grammar kWholeText{u",", u"", true};

bool StartsWithOneOf(TextView text, TextView units) {
  return !text.empty() && units.find(text.front()) != TextView::npos;
}

void Skip(TextView& rest, TextView units) {
  while (StartsWithOneOf(rest, units)) rest.remove_prefix(1);
}

bool TakeOneOf(TextView& rest, TextView units) {
  if (!StartsWithOneOf(rest, units)) return false;
  rest.remove_prefix(1);
  return true;
}

// Takes digits and `skipped` units off `rest`, handing each digit to `use` as '0' to '9'. Whether there was a
// digit.
template <typename Use>
bool TakeDigits(TextView& rest, TextView skipped, bool full_width, Use use) {
  constexpr char16_t kFullWidthZero = 0xFF10;
  bool found = false;
  for (; !rest.empty(); rest.remove_prefix(1)) {
    const char16_t unit = rest.front();
    if (unit >= u'0' && unit <= u'9') {
      use(static_cast<char>(unit));
    } else if (full_width && unit >= kFullWidthZero && unit <= kFullWidthZero + 9) {
      use(static_cast<char>('0' + (unit - kFullWidthZero)));
    } else if (skipped.find(unit) != TextView::npos) {
      continue;
    } else {
      break;
    }
    found = true;
  }
  return found;
}

// digits * 10^scale; no leading zeros, zero has no digit.
struct Decimal {
  std::string digits;
  std::int64_t scale = 0;
  bool has_fraction = false;
};

// Takes "e5", "D-3" off `rest`; leaves it alone and gives 0 when no digit follows the letter.
std::int64_t TakeExponent(TextView& rest, const Grammar& grammar) {
  constexpr std::int64_t kLimit = 1'000'000'000'000;
  TextView ahead = rest;
  if (!TakeOneOf(ahead, u"eEdD")) return 0;
  Skip(ahead, grammar.elsewhere);
  const bool negative = StartsWithOneOf(ahead, u"-");
  TakeOneOf(ahead, u"+-");
  std::int64_t exponent = 0;
  const auto use = [&exponent](char digit) {
    if (exponent < kLimit) exponent = exponent * 10 + (digit - '0');
  };
  if (!TakeDigits(ahead, grammar.elsewhere, grammar.full_width_digits, use)) return 0;
  rest = ahead;
  return negative ? -exponent : exponent;
}

// Takes an unsigned decimal number off `rest`; nothing when there is no digit.
std::optional<Decimal> TakeDecimal(TextView& rest, const Grammar& grammar) {
  Decimal decimal;
  const auto keep = [&decimal](char digit) {
    if (digit != '0' || !decimal.digits.empty()) decimal.digits.push_back(digit);
  };
  bool found = TakeDigits(rest, grammar.in_whole_part, grammar.full_width_digits, keep);
  if (TakeOneOf(rest, u".")) {
    const auto keep_fraction = [&](char digit) {
      keep(digit);
      --decimal.scale;
    };
    decimal.has_fraction = TakeDigits(rest, grammar.elsewhere, grammar.full_width_digits, keep_fraction);
    found = found || decimal.has_fraction;
  }
  if (!found) return std::nullopt;
  decimal.scale += TakeExponent(rest, grammar);
  return decimal;
}

// The nearest double; infinity beyond the range of doubles, 0 below it.
double ToValue(Decimal decimal) {
  constexpr std::size_t kFitsInteger = 18;
  std::string& digits = decimal.digits;
  if (digits.empty()) return 0;
  if (decimal.scale == 0 && digits.size() <= kFitsInteger) {
    std::int64_t whole = 0;
    for (const char digit : digits) whole = whole * 10 + (digit - '0');
    return static_cast<double>(whole);
  }
  const bool is_large = static_cast<std::int64_t>(digits.size()) + decimal.scale > 0;
  digits.append("e").append(std::to_string(decimal.scale));
  double value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec == std::errc::result_out_of_range) return is_large ? kInfinity : 0;
  return value;
}

// The bits that hexadecimal or octal digits spell; `lost` when there were more than 64.
struct Bits {
  std::uint64_t value = 0;
  bool lost = false;
  bool found = false;
};

int DigitValue(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return std::numeric_limits<int>::max();
}

Bits TakeBits(TextView& rest, int bits_per_digit, TextView skipped) {
  Bits bits;
  for (; !rest.empty(); rest.remove_prefix(1)) {
    const int digit = DigitValue(rest.front());
    if (digit < 1 << bits_per_digit) {
      bits.lost = bits.lost || bits.value >> (64 - bits_per_digit) != 0;
      bits.value = (bits.value << bits_per_digit) | static_cast<std::uint64_t>(digit);
      bits.found = true;
    } else if (skipped.find(rest.front()) == TextView::npos) {
      break;
    }
  }
  return bits;
}

constexpr int kHexBits = 4;
constexpr int kOctalBits = 3;

// What Val makes of the text behind a leading "&": 16 bits, or 32 when more are spelled or "&" follows;
// signed.
double ValOfBits(TextView rest) {
  const bool is_hex = TakeOneOf(rest, u"hH");
  if (!is_hex) TakeOneOf(rest, u"oO");
  const Bits bits = TakeBits(rest, is_hex ? kHexBits : kOctalBits, kVal.elsewhere);
  const bool is_long = bits.lost || bits.value > std::numeric_limits<std::uint16_t>::max();
  if (is_long || StartsWithOneOf(rest, u"&")) return static_cast<std::int32_t>(bits.value);
  return static_cast<std::int16_t>(bits.value);
}

// The number that a text is as a whole. `bits` is there for "&H" and "&O", which wrap in narrow integers.
struct WholeText {
  double value = 0;  // infinite beyond the range of doubles
  std::optional<std::uint64_t> bits;
};

constexpr TextView kWhiteSpace = u" \t\n\v\f\r";

std::optional<WholeText> ReadBits(TextView rest) {
  const bool is_hex = TakeOneOf(rest, u"hH");
  if (!is_hex && !TakeOneOf(rest, u"oO")) return std::nullopt;
  const Bits bits = TakeBits(rest, is_hex ? kHexBits : kOctalBits, {});
  Skip(rest, kWhiteSpace);
  if (!bits.found || !rest.empty()) return std::nullopt;
  if (bits.lost) return WholeText{kInfinity, std::nullopt};
  return WholeText{static_cast<double>(bits.value), bits.value};
}

// What stands around the digits: each of sign and currency once, before or after; parentheses are a sign.
class Affixes {
 public:
  void TakeLeading(TextView& rest) {
    while (Skips(rest) || TakesSign(rest) || TakesCurrency(rest) || OpensParenthesis(rest)) {
    }
  }
  void TakeTrailing(TextView& rest) {
    while (Skips(rest) || TakesSign(rest) || TakesCurrency(rest) || ClosesParenthesis(rest)) {
    }
  }
  [[nodiscard]] bool complete() const { return !is_open_; }
  [[nodiscard]] bool is_negative() const { return is_negative_; }

 private:
  static bool Skips(TextView& rest) { return TakeOneOf(rest, kWhiteSpace); }
  bool TakesSign(TextView& rest) {
    if (has_sign_ || !StartsWithOneOf(rest, u"+-")) return false;
    is_negative_ = rest.front() == u'-';
    has_sign_ = true;
    return TakeOneOf(rest, u"+-");
  }
  bool TakesCurrency(TextView& rest) {
    if (has_currency_ || !TakeOneOf(rest, u"$")) return false;
    return has_currency_ = true;
  }
  bool OpensParenthesis(TextView& rest) {
    if (has_sign_ || !TakeOneOf(rest, u"(")) return false;
    return has_sign_ = is_negative_ = is_open_ = true;
  }
  bool ClosesParenthesis(TextView& rest) {
    if (!is_open_ || !TakeOneOf(rest, u")")) return false;
    is_open_ = false;
    return true;
  }

  bool has_sign_ = false;
  bool has_currency_ = false;
  bool is_negative_ = false;
  bool is_open_ = false;
};

std::optional<WholeText> ReadWholeText(TextView text) {
  Skip(text, kWhiteSpace);
  if (TakeOneOf(text, u"&")) return ReadBits(text);
  Affixes affixes;
  affixes.TakeLeading(text);
  if (StartsWithOneOf(text, kWholeText.in_whole_part)) return std::nullopt;
  std::optional<Decimal> decimal = TakeDecimal(text, kWholeText);
  if (!decimal) return std::nullopt;
  affixes.TakeTrailing(text);
  if (!text.empty() || !affixes.complete()) return std::nullopt;
  const double value = ToValue(std::move(*decimal));
  return WholeText{affixes.is_negative() ? -value : value, std::nullopt};
}

WholeText RequireWholeText(TextView text) {
  const std::optional<WholeText> number = ReadWholeText(text);
  if (!number) throw TypeMismatch();
  if (std::isinf(number->value)) throw Overflow();
  return *number;
}

// `number` as an integer of 16 or 32 bits: the bits of "&H" as they are, every other value rounded.
template <typename Integer>
Integer Narrow(const WholeText& number, Integer (*round)(double)) {
  constexpr auto kMostBits = std::numeric_limits<std::make_unsigned_t<Integer>>::max();
  if (number.bits && *number.bits <= kMostBits) return static_cast<Integer>(*number.bits);
  return round(number.value);
}

}  // namespace

double Val(TextView text) {
  Skip(text, kVal.in_whole_part);
  if (TakeOneOf(text, u"&")) return ValOfBits(text);
  const bool negative = StartsWithOneOf(text, u"-");
  TakeOneOf(text, u"+-");
  std::optional<Decimal> decimal = TakeDecimal(text, kVal);
  if (!decimal) return 0;
  if (decimal->has_fraction && StartsWithOneOf(text, u"%&")) throw TypeMismatch();
  const double value = ToValue(std::move(*decimal));
  if (std::isinf(value)) throw Overflow();
  return negative ? -value : value;
}

double ToDouble(TextView text) {
  return RequireWholeText(text).value;
}

std::int32_t ToLong(TextView text) {
  return Narrow<std::int32_t>(RequireWholeText(text), ToLong);
}

std::int16_t ToInteger(TextView text) {
  return Narrow<std::int16_t>(RequireWholeText(text), ToInteger);
}

bool IsNumeric(TextView text) {
  const std::optional<WholeText> number = ReadWholeText(text);
  return number && !std::isinf(number->value);
}

}  // namespace quorvel
