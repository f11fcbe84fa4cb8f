#include "platform/memory/memory_recordset.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/platform/expect_error.h"

namespace quorvel {
namespace {

constexpr std::int32_t kNullable = -1;
constexpr std::int32_t kNotNullable = 0;
constexpr int kDoesNotFit = -2147217887;
constexpr Date kToday{40200};       // 2010-01-22
constexpr Date kDecember28{40175};  // 2009-12-28
constexpr Date kJanuary5{40183};    // 2010-01-05
constexpr double kTenOClock = 10.0 / 24;

struct Person {
  CellValue name;
  CellValue amount;
  CellValue due;
};

MemoryRecordset People(const std::vector<Person>& people) {
  MemoryRecordset recordset(kToday);
  recordset.AppendField(u"Id", FieldType::kInteger, 15, kNullable);
  recordset.AppendField(u"FC_B", FieldType::kVarChar, 500, kNullable);
  recordset.AppendField(u"FC_D", FieldType::kInteger, 15, kNullable);
  recordset.AppendField(u"Due Date", FieldType::kTimestamp, 0, kNullable);
  recordset.Open();
  double id = 0;
  for (const Person& person : people) {
    recordset.AddNew();
    recordset.SetValue(u"Id", ++id);
    recordset.SetValue(u"FC_B", person.name);
    recordset.SetValue(u"FC_D", person.amount);
    recordset.SetValue(u"Due Date", person.due);
  }
  return recordset;
}

// The records that the filter leaves, by position from 1 ("1 3"), walked as a send walks them; "error 3001"
// when it is refused.
std::string Walk(Recordset& recordset, TextView filter) {
  const int error = ErrorOf([&] { recordset.SetFilter(filter); });
  if (error != 0) return "error " + std::to_string(error);
  std::string ids;
  int count = 0;
  for (; !recordset.Eof(); recordset.MoveNext(), ++count) {
    if (!ids.empty()) ids += ' ';
    ids += ToUtf8(ToText(recordset.Value(u"Id")));
  }
  EXPECT_EQ(recordset.RecordCount(), count);
  return ids;
}

struct FilterCase {
  TextView filter;
  std::string kept;
};

void ExpectKept(Recordset& recordset, const std::vector<FilterCase>& cases) {
  for (const FilterCase& expected : cases) {
    EXPECT_EQ(Walk(recordset, expected.filter), expected.kept) << ToUtf8(expected.filter);
  }
}

class FilterTest : public testing::Test {
 protected:
  MemoryRecordset people_ = People({
      {u"Basil", 10.0, Date{kDecember28.serial + kTenOClock}},
      {u"bASKET", -5.0, kJanuary5},
      {u"O'Hara", 2147483647.0, kDecember28},
      {u"'1'", 5.0, Date{kJanuary5.serial + 0.6 / 86400}},
      {u"50%_x", {}, {}},
      {{}, 7.0, u"1/22"},
  });
};

TEST_F(FilterTest, ComparesTextWithCaseIgnored) {
  ExpectKept(people_, {{u"FC_B = 'BASIL'", "1"},
                       {u"FC_B<>'basil'", "2 3 4 5"},
                       {u"FC_B >= 'basket' and FC_B <= 'o'", "2"},
                       {u"FC_B < 'B'", "4 5"},  // digits and signs come before letters
                       {u"FC_B = 'Basi'", ""},
                       {u"FC_B='O''hara'", "3"},
                       {u"FC_B = #'1'#", "4"},
                       {u"FC_B = '''1'''", "4"},
                       {u"FC_B = ''", ""}});
  MemoryRecordset numbers = People({{u"00447", {}, {}}, {u"447", {}, {}}});
  ExpectKept(numbers, {{u"FC_B = 00447", "1"}, {u"FC_B = 447", "2"}});
}

TEST_F(FilterTest, LikeTakesAWildcardAtTheEndOrAtBothEnds) {
  ExpectKept(people_, {{u"FC_B like 'Bas%'", "1 2"},
                       {u"FC_B LIKE'bas*'", "1 2"},
                       {u"FC_B Like '*A*'", "1 2 3"},
                       {u"FC_B LIKE '%k*'", "2"},
                       {u"FC_B LIKE 'basil'", "1"},
                       {u"FC_B LIKE 'asi*'", ""},
                       {u"FC_B LIKE '*'", "1 2 3 4 5"},
                       {u"FC_B LIKE '%%'", "1 2 3 4 5"},
                       {u"FC_B LIKE '_asil'", ""},
                       {u"FC_B LIKE '*_x*'", "5"},
                       {u"FC_B LIKE '*sil'", "error 3001"},
                       {u"FC_B LIKE 'B*l'", "error 3001"},
                       {u"FC_B LIKE '*a*i*'", "error 3001"},
                       {u"FC_B LIKE 5", "error 3001"},
                       {u"FC_B LIKE NULL", "error 3001"},
                       {u"FC_D LIKE '1*'", "error 3001"}});
}

TEST_F(FilterTest, ComparesIntegersAsNumbers) {
  ExpectKept(people_, {{u"FC_D > 7", "1 3"},
                       {u"FC_D > '7'", "1 3"},  // as texts "10" would come before "7"
                       {u"FC_D<-4.5", "2"},
                       {u"FC_D = 5.5", ""},
                       {u"FC_D >= $1.0e1", "1 3"},
                       {u"FC_D < 99999999999", "1 2 3 4 6"},
                       {u"FC_D = 'ten'", "error 3421"},
                       {u"FC_D = ''", "error 3421"},
                       {u"FC_D = '1e400'", "error 3421"},
                       {u"FC_D = #12/28/2009#", "error 3421"}});
}

TEST_F(FilterTest, ComparesTimestampsToTheSecond) {
  ExpectKept(people_, {{u"[Due Date]>'12/28/2009'", "1 2 4 6"},
                       {u"[Due Date]>#12/28/2009#", "1 2 4 6"},
                       {u"[Due Date] = '2009-12-28'", "3"},
                       {u"[due date] = #12/28/2009 10:00 AM#", "1"},
                       {u"[Due Date] = #1/5/2010#", "2"},          // the fourth is 0.6 seconds later
                       {u"[Due Date] > #1/5/2010#", "4 6"},        // and rounds to the next one
                       {u"[Due Date] = '1/22'", "6"},              // this year
                       {u"[Due Date] < '5/1/2010'", "1 2 3 4 6"},  // month first
                       {u"[Due Date] = 'tomorrow'", "error 3421"},
                       {u"[Due Date] = #2/30/2010#", "error 3421"},
                       {u"[Due Date] = 40175", "error 3421"},
                       {u"[Due Date] > 2.5", "error 3421"},  // in quotes it is 02:05
                       {u"[Due Date] > 12/28/2009", "error 3001"},
                       {u"FC_B = #12/28/2009#", "error 3421"}});
}

TEST_F(FilterTest, NullSatisfiesOnlyTheComparisonWithNull) {
  ExpectKept(people_, {{u"FC_B = NULL", "6"},
                       {u"FC_B <> null", "1 2 3 4 5"},
                       {u"FC_D = Null OR [Due Date] = NULL", "5"},
                       {u"FC_D <> 10", "2 3 4 6"},
                       {u"FC_B < NULL", "error 3001"},
                       {u"FC_B = 'NULL'", ""}});
}

TEST_F(FilterTest, AndAndOrHaveNoPrecedence) {
  ExpectKept(people_, {{u"Id = 1 OR Id = 2 AND Id = 2", "2"},
                       {u"Id = 2 AND Id = 2 OR Id = 1", "1 2"},
                       {u"Id = 1 or (Id = 2 and Id > 0)", "1 2"},
                       {u"(Id=1 AND Id<9)OR(Id=2 AND FC_D>0)OR Id=3", "1 3"},
                       {u"((Id = 1) AND (FC_D = 10))", "1"},
                       {u"(Id = 1 OR Id = 2) OR Id = 3", "1 2 3"},
                       {u"Id = 4 AND Id = 5 AND Id = 4 OR Id = 6", "6"},
                       {u"(Id = 1 OR Id = 2) AND FC_D > 0", "error 3001"},
                       {u"FC_D > 0 AND (Id = 1 OR Id = 2)", "error 3001"},
                       {u"((Id = 1 OR Id = 2)) AND FC_D > 0", "error 3001"},
                       {u"(Id = 1 OR Id = 2) OR Id = 3 AND FC_D > 0", "error 3001"}});
}

TEST_F(FilterTest, RefusesWhatTheGrammarDoesNotKnow) {
  for (const TextView filter : {u" ",
                                u"FC_B",
                                u"FC_B =",
                                u"= 'x'",
                                u"FC_B = 'x",
                                u"FC_B = 'x''",
                                u"FC_B = #1/1/2010",
                                u"[FC_B = 'x'",
                                u"FC_B = #'x'",
                                u"#B# = 'x'",
                                u"FC_B == 'x'",
                                u"FC_B != 'x'",
                                u"FC_B = x",
                                u"FC_B = Id",
                                u"Id = 5abc",
                                u"Id = 1,2",
                                u"Id = .",
                                u"Id = 1e",
                                u"5 = Id",
                                u"NOT Id = 1",
                                u"NOT (Id = 1)",
                                u"Id IN (1)",
                                u"Id BETWEEN 1 AND 2",
                                u"FC_B IS NULL",
                                u"Len(FC_B) = 1",
                                u"Id = 1 AND",
                                u"OR Id = 1",
                                u"Id = 1 Id = 2",
                                u"(Id = 1",
                                u"Id = 1)",
                                u"()",
                                u"Id = 1;",
                                u"FC_B = \u2018x\u2019"}) {
    EXPECT_EQ(Walk(people_, filter), "error 3001") << ToUtf8(filter);
  }
  ExpectKept(people_, {{u"FC_X = 'x'", "error 3265"}, {u"[FC_B ] = 'x'", "error 3265"}});

  const auto nested = [](std::size_t depth) { return Text(depth, u'(') + u"Id = 1" + Text(depth, u')'); };
  ExpectKept(people_, {{nested(64), "1"}, {nested(65), "error 3001"}});
}

TEST_F(FilterTest, FilteredViewIsWhatTheCursorWalks) {
  people_.SetFilter(u"FC_D = 10");
  EXPECT_EQ(Walk(people_, u"FC_D ="), "error 3001");
  EXPECT_EQ(people_.RecordCount(), 1);  // the former filter stands
  EXPECT_EQ(people_.Value(u"fc_b"), CellValue(u"Basil"));

  people_.SetFilter(u"Id = 99");
  EXPECT_TRUE(people_.Bof() && people_.Eof());
  EXPECT_EQ(ErrorOf([&] { people_.MoveFirst(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { (void)people_.Value(u"Id"); }), 3021);
  people_.AddNew();
  people_.SetValue(u"Id", 7.0);
  EXPECT_EQ(people_.RecordCount(), 1);
  EXPECT_EQ(Walk(people_, u"Id = 99"), "");
  EXPECT_EQ(Walk(people_, u""), "1 2 3 4 5 6 7");
  EXPECT_EQ(Walk(people_, u"FC_B = NULL"), "6 7");  // a field never set is NULL
}

TEST(MemoryRecordsetTest, StatesAllowWhatTheyShould) {
  MemoryRecordset recordset(kToday);
  EXPECT_EQ(ErrorOf([&] { recordset.Open(); }), 3709);
  EXPECT_EQ(ErrorOf([&] { recordset.AddNew(); }), 3704);
  EXPECT_EQ(ErrorOf([&] { (void)recordset.Eof(); }), 3704);
  EXPECT_EQ(ErrorOf([&] { (void)recordset.RecordCount(); }), 3704);
  EXPECT_EQ(ErrorOf([&] { recordset.Close(); }), 3704);
  recordset.SetFilter(u"not a filter");
  recordset.AppendField(u"C", FieldType::kVarChar, 20, kNullable);
  EXPECT_EQ(ErrorOf([&] { recordset.AppendField(u"c", FieldType::kInteger, 15, kNullable); }), 3367);
  recordset.Open();
  EXPECT_EQ(ErrorOf([&] { recordset.Open(); }), 3705);
  EXPECT_EQ(ErrorOf([&] { recordset.AppendField(u"D", FieldType::kInteger, 15, kNullable); }), 3705);
  recordset.AddNew();
  recordset.Close();
  EXPECT_EQ(ErrorOf([&] { recordset.SetValue(u"C", u"x"); }), 3704);
  recordset.Open();
  recordset.SetFilter(u"");
  EXPECT_EQ(recordset.RecordCount(), 0);
}

TEST(MemoryRecordsetTest, RecordsCountAtOnceAndTheCursorEndsAfterTheLast) {
  MemoryRecordset recordset = People({});
  EXPECT_TRUE(recordset.Bof() && recordset.Eof());
  EXPECT_EQ(ErrorOf([&] { recordset.MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { recordset.Update(); }), 3021);
  recordset.AddNew();
  EXPECT_EQ(recordset.RecordCount(), 1);
  EXPECT_FALSE(recordset.Bof() || recordset.Eof());
  recordset.SetValue(u"Id", 1.0);
  recordset.AddNew();  // ends the first addition
  recordset.SetValue(u"Id", 2.0);
  recordset.Update();
  EXPECT_EQ(recordset.Value(u"Id"), CellValue(2.0));
  recordset.MoveFirst();
  EXPECT_EQ(recordset.Value(u"Id"), CellValue(1.0));
  recordset.MoveNext();
  recordset.MoveNext();
  EXPECT_TRUE(recordset.Eof());
  EXPECT_FALSE(recordset.Bof());
  EXPECT_EQ(ErrorOf([&] { recordset.MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { (void)recordset.Value(u"Nope"); }), 3265);
}

// What a field of that type reads after `value` was set.
CellValue Stored(FieldType type, std::int32_t size, const CellValue& value,
                 std::int32_t attributes = kNullable) {
  MemoryRecordset recordset(kToday);
  recordset.AppendField(u"F", type, size, attributes);
  recordset.Open();
  recordset.AddNew();
  recordset.SetValue(u"F", value);
  return recordset.Value(u"F");
}

TEST(MemoryRecordsetTest, ConvertsToTheTypeOfTheField) {
  EXPECT_EQ(Stored(FieldType::kInteger, 15, 2.5), CellValue(2.0));
  EXPECT_EQ(Stored(FieldType::kInteger, 15, -2147483648.0), CellValue(-2147483648.0));
  EXPECT_EQ(Stored(FieldType::kInteger, 15, u" 1,234 "), CellValue(1234.0));
  EXPECT_EQ(Stored(FieldType::kInteger, 15, true), CellValue(-1.0));
  EXPECT_EQ(Stored(FieldType::kTimestamp, 0, u"12/28/2009"), CellValue(kDecember28));
  EXPECT_EQ(Stored(FieldType::kTimestamp, 0, 40175.0), CellValue(kDecember28));
  EXPECT_EQ(Stored(FieldType::kVarChar, 20, 447700900123.0), CellValue(u"447700900123"));
  EXPECT_EQ(Stored(FieldType::kVarChar, 20, kDecember28), CellValue(u"12/28/2009"));
  EXPECT_EQ(Stored(FieldType::kVarChar, 2, u"\U0001F600"), CellValue(u"\U0001F600"));
  for (const FieldType type : {FieldType::kInteger, FieldType::kTimestamp, FieldType::kVarChar}) {
    EXPECT_EQ(Stored(type, 20, {}), CellValue());
  }
}

TEST(MemoryRecordsetTest, RefusesWhatDoesNotFitTheField) {
  struct Refusal {
    FieldType type;
    CellValue value;
    int error;
  };
  const double not_a_number = std::numeric_limits<double>::quiet_NaN();
  for (const Refusal& refusal : std::vector<Refusal>{
           {FieldType::kInteger, u"ten", 3421},
           {FieldType::kInteger, u"", 3421},
           {FieldType::kInteger, CellError{2042}, 3421},
           {FieldType::kInteger, 447700900123.0, kDoesNotFit},
           {FieldType::kInteger, 2147483647.5, kDoesNotFit},
           {FieldType::kInteger, u"447700900123", kDoesNotFit},
           {FieldType::kTimestamp, u"soon", 3421},
           {FieldType::kTimestamp, CellError{2007}, 3421},
           {FieldType::kTimestamp, 2958466.0, kDoesNotFit},
           {FieldType::kTimestamp, not_a_number, kDoesNotFit},
           {FieldType::kVarChar, CellError{2042}, 3421},
           {FieldType::kVarChar, Text(21, u'7'), kDoesNotFit},
       }) {
    EXPECT_EQ(ErrorOf([&] { (void)Stored(refusal.type, 20, refusal.value); }), refusal.error)
        << static_cast<int>(refusal.type);
  }
  EXPECT_EQ(ErrorOf([&] { (void)Stored(FieldType::kVarChar, 20, {}, kNotNullable); }), kDoesNotFit);

  MemoryRecordset recordset = People({{u"Ann", 1.0, {}}});
  EXPECT_EQ(ErrorOf([&] { recordset.SetValue(u"FC_D", u"x"); }), 3421);
  EXPECT_EQ(recordset.Value(u"FC_D"), CellValue(1.0));
}

}  // namespace
}  // namespace quorvel
