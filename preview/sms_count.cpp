#include "preview/sms_count.h"

#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr std::size_t kUnicodePart = 63;
constexpr std::size_t kUnicodeLongPart = 189;
constexpr std::size_t kSingleGsm = 160;
constexpr double kGsmPart = 153;
constexpr std::size_t kSingleLongGsm = 460;
constexpr double kGsmLongPart = 459;

std::int32_t RoundUp(std::size_t length, std::size_t part) {
  return static_cast<std::int32_t>((length + part - 1) / part);
}

// The whole number above `quotient` when it lies strictly between two neighbours from 1 up to `limit`;
// otherwise 0.
std::int16_t RoundUpBelow(double quotient, int limit) {
  for (int k = 1; k < limit; ++k) {
    if (k < quotient && quotient < k + 1) return static_cast<std::int16_t>(k + 1);
  }
  return 0;
}

}  // namespace

std::int32_t UnicodeSmsCount(std::size_t length) {
  return RoundUp(length, kUnicodePart);
}

std::int32_t UnicodeLongSmsCount(std::size_t length) {
  return RoundUp(length, kUnicodeLongPart);
}

std::int16_t GsmSmsCount(std::size_t length) {
  constexpr int kLimit = 20;
  if (length <= kSingleGsm) return 1;
  const double quotient = static_cast<double>(length) / kGsmPart;
  if (const std::int16_t count = RoundUpBelow(quotient, kLimit); count != 0) return count;
  return quotient > kLimit ? ToInteger(quotient) : std::int16_t{1};
}

Text GsmLongSmsCount(std::size_t length) {
  constexpr int kLimit = 8;
  if (length < kSingleLongGsm) return u"1";
  const double quotient = static_cast<double>(length) / kGsmLongPart;
  if (const std::int16_t count = RoundUpBelow(quotient, kLimit); count != 0) {
    return NumberToText(std::int32_t{count});
  }
  return quotient > kLimit ? NumberToText(quotient) : Text(u"1");
}

}  // namespace quorvel
