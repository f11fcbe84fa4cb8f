#include "preview/sms_count.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"

namespace quorvel {
namespace {

struct Count {
  std::size_t length;
  int count;
};

TEST(SmsCount, TextMessagesAreCountedByTheTariff) {
  // Whole multiples of 153 up to 20 count 1, and beyond 20 the quotient is rounded to the nearest.
  for (const auto& [length, count] :
       {Count{0, 1}, {153, 1},   {160, 1},   {161, 2},   {305, 2},   {306, 1},        {307, 3},
        {459, 1},    {460, 4},   {3059, 20}, {3060, 1},  {3061, 20}, {3090, 20},      {3136, 20},
        {3137, 21},  {3200, 21}, {3213, 21}, {3214, 21}, {4590, 30}, {5013351, 32767}}) {
    EXPECT_EQ(GsmSmsCount(length), count) << length;
  }
  try {
    static_cast<void>(GsmSmsCount(std::size_t{153} * 32768));
    FAIL() << "beyond 16 bits";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), Overflow().number());
  }
}

TEST(SmsCount, UnicodeMessagesHaveNoAllowanceForASingleOne) {
  for (const auto& [length, count] : {Count{0, 0}, {1, 1}, {6, 1}, {63, 1}, {64, 2}, {126, 2}, {127, 3}}) {
    EXPECT_EQ(UnicodeSmsCount(length), count) << length;
  }
  for (const auto& [length, count] : {Count{0, 0}, {1, 1}, {18, 1}, {189, 1}, {190, 2}, {378, 2}, {379, 3}}) {
    EXPECT_EQ(UnicodeLongSmsCount(length), count) << length;
  }
}

TEST(SmsCount, LongTextMessagesShowTheBareQuotientAboveEight) {
  struct Row {
    std::size_t length;
    TextView shown;
  };
  for (const auto& [length, shown] : {Row{0, u"1"},
                                      {459, u"1"},
                                      {460, u"2"},
                                      {917, u"2"},
                                      {918, u"1"},
                                      {919, u"3"},
                                      {3671, u"8"},
                                      {3672, u"1"},
                                      {3673, u"8.00217864923747"},
                                      {3676, u"8.00871459694989"},
                                      {4590, u"10"}}) {
    EXPECT_EQ(GsmLongSmsCount(length), shown) << length;
  }
}

}  // namespace
}  // namespace quorvel
