#include "reports/report_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char16_t kEuro = u'\u20AC';

TEST(ReportTable, TheFirstRecordIsTheHeader) {
  const ReportTable table = ParseReport(u"No-Sta~tus,1-A,,2-B-");
  EXPECT_THAT(table.header, ElementsAre(u"No", u"Sta~tus"));
  EXPECT_THAT(table.records, ElementsAre(u"1-A", u"", u"2-B-"));
}

TEST(ReportTable, AHeaderAloneAndAnEmptyOne) {
  EXPECT_THAT(ParseReport(u"No").header, ElementsAre(u"No"));
  EXPECT_THAT(ParseReport(u"No").records, IsEmpty());
  EXPECT_THAT(ParseReport(u",1").header, IsEmpty());
  EXPECT_THAT(ParseReport(u",1").records, ElementsAre(u"1"));
}

TEST(ReportTable, FieldsAreFreedOfTheirEscapes) {
  EXPECT_THAT(ReportFields(u"2024~03~01-a\u20ACb\x01"
                           u"c-one\r\ntwo\r\n\r\n--\rx\n",
                           kEuro),
              ElementsAre(u"2024-03-01", u"a,b,c", u"one two  ", u"", u"\rx\n"));
  EXPECT_THAT(ReportFields(u"", kEuro), IsEmpty());
}

TEST(ReportTable, CommasAreEscapedByTheCodePagesCharacter) {
  EXPECT_THAT(ReportFields(u"a\u0402b\u20AC", u'\u0402'), ElementsAre(u"a,b\u20AC"));
}

}  // namespace
}  // namespace quorvel
