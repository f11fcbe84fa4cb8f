#include "platform/cell_value.h"

#include <gtest/gtest.h>

#include "expect_error.h"

namespace quorvel {
namespace {

constexpr Date kToday{45474};  // 2024-07-01

TEST(CellValue, IsConcatenatedAsText) {
  EXPECT_EQ(ToText(CellValue()), u"");
  EXPECT_EQ(ToText(447700900123.0), u"447700900123");
  EXPECT_EQ(ToText(Text(u" 07 ")), u" 07 ");
  EXPECT_EQ(ToText(true), u"True");
  EXPECT_EQ(ToText(false), u"False");
  EXPECT_EQ(ToText(Date{45293.5}), u"1/2/2024 12:00:00 PM");
  EXPECT_EQ(ErrorOf([] { return ToText(CellError{2007}); }), kTypeMismatch);
}

TEST(CellValue, IsNumericByItsKind) {
  EXPECT_TRUE(IsNumeric(CellValue()));
  EXPECT_TRUE(IsNumeric(CellValue(1.5)));
  EXPECT_TRUE(IsNumeric(CellValue(false)));
  EXPECT_TRUE(IsNumeric(CellValue(Text(u" 12 "))));
  EXPECT_FALSE(IsNumeric(CellValue(Text())));
  EXPECT_FALSE(IsNumeric(CellValue(Date{45293})));
  EXPECT_FALSE(IsNumeric(CellValue(CellError{2042})));
}

TEST(CellValue, HoldsADateOnlyAsDateOrText) {
  EXPECT_EQ(ReadDate(Date{45293.5}, kToday), Date{45293.5});
  EXPECT_EQ(ReadDate(Text(u"1/2"), kToday), Date{45293});
  EXPECT_FALSE(ReadDate(45293.0, kToday));
  EXPECT_FALSE(ReadDate(true, kToday));
  EXPECT_FALSE(ReadDate(CellValue(), kToday));
  EXPECT_FALSE(ReadDate(CellError{2042}, kToday));
}

}  // namespace
}  // namespace quorvel
