#include "hosts/console/csv.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quorvel {
namespace {

using Rows = std::vector<std::vector<Text>>;

Rows Cells(MemorySheet& sheet) {
  Rows rows;
  for (std::int32_t row = 1; row <= sheet.UsedRows(); ++row) {
    rows.emplace_back();
    for (std::int32_t column = 1; column <= sheet.UsedColumns(); ++column) {
      rows.back().push_back(sheet.CellText({ColumnLetters(column), row}));
    }
  }
  return rows;
}

Rows Read(std::string_view bytes) {
  MemorySheet sheet(u"Sheet1");
  const auto fault = ReadCsv(bytes, sheet);
  if (fault) ADD_FAILURE() << fault->line << ": " << fault->reason;
  return Cells(sheet);
}

CsvFault FaultOf(std::string_view bytes) {
  MemorySheet sheet(u"Sheet1");
  return ReadCsv(bytes, sheet).value_or(CsvFault{0, "none"});
}

TEST(ReadCsv, FieldsStandAsTheyAreWritten) {
  MemorySheet sheet(u"Sheet1");
  ASSERT_EQ(ReadCsv("0044,+44 7700,9876543210123456789, x ,,1e5\n", sheet), std::nullopt);
  EXPECT_EQ(Cells(sheet), (Rows{{u"0044", u"+44 7700", u"9876543210123456789", u" x ", u"", u"1e5"}}));
  EXPECT_EQ(sheet.Value({u"A", 1}), CellValue(Text(u"0044")));
  EXPECT_EQ(sheet.Value({u"E", 1}), CellValue());
}

TEST(ReadCsv, EveryLineEndEndsARowAndTheLastNeedsNone) {
  const Rows rows{{u"a"}, {u"b"}, {u""}, {u"c"}};
  EXPECT_EQ(Read("a\nb\n\nc\n"), rows);
  EXPECT_EQ(Read("a\rb\r\rc"), rows);
  EXPECT_EQ(Read("a\r\nb\r\n\r\nc\r\n"), rows);
  EXPECT_EQ(Read("a\r\nb\n\rc"), rows);
  EXPECT_EQ(Read("a,\n,b"), (Rows{{u"a", u""}, {u"", u"b"}}));
}

TEST(ReadCsv, QuotesKeepCommasLineBreaksAndQuotes) {
  EXPECT_EQ(Read("\"a,b\",\"say \"\"hi\"\"\",\"two\r\nlines\ror\nthree\"\r\n\"\",x"),
            (Rows{{u"a,b", u"say \"hi\"", u"two\r\nlines\ror\nthree"}, {u"", u"x", u""}}));
  EXPECT_EQ(Read("5\" pipe,a\"b\""), (Rows{{u"5\" pipe", u"a\"b\""}}));  // a quote inside a plain field
}

TEST(ReadCsv, TakesUnicodeInItsUsualForms) {
  const Rows rows{{u"é", u"話", u"\U0001F600"}};
  EXPECT_EQ(Read("é,話,\U0001F600"), rows);
  EXPECT_EQ(Read("\xEF\xBB\xBFé,話,\U0001F600"), rows);
  using namespace std::string_view_literals;
  EXPECT_EQ(Read("\xFF\xFE\xE9\x00,\x00\x71\x8A,\x00\x3D\xD8\x00\xDE"sv), rows);
  EXPECT_EQ(Read("\xFE\xFF\x00\xE9\x00,\x8A\x71\x00,\xD8\x3D\xDE\x00"sv), rows);
}

TEST(ReadCsv, NothingIsAnEmptySheet) {
  EXPECT_EQ(Read(""), (Rows{{u""}}));
  EXPECT_EQ(Read("\xEF\xBB\xBF"), (Rows{{u""}}));
}

TEST(ReadCsv, AFaultIsNamedByItsLine) {
  using namespace std::string_view_literals;
  struct Case {
    std::string_view bytes;
    std::size_t line;
    std::string_view reason;
  };
  for (const Case& fault :
       {Case{"a\nb,\"open\nc\nd", 2, "not closed"}, Case{"a\n\"", 2, "not closed"},
        Case{"a\r\n\"x\ny\" z\n", 3, "after the closing quote"},
        Case{"\"x\"\"\"y", 1, "after the closing quote"}, Case{"a\nb\0c"sv, 2, "zero"},
        Case{"a\r\nb\r\xFF", 3, "UTF-8"}, Case{"\xC0\xAF", 1, "UTF-8"}, Case{"\xED\xA0\x80", 1, "UTF-8"},
        Case{"\xF4\x90\x80\x80", 1, "UTF-8"}, Case{"ok\n\xE2\x82", 2, "UTF-8"},
        Case{"\xFF\xFE\x0A\x00\x3D\xD8"sv, 2, "UTF-16"}, Case{"\xFF\xFE\x61"sv, 1, "UTF-16"}}) {
    const CsvFault found = FaultOf(fault.bytes);
    EXPECT_EQ(found.line, fault.line) << found.reason;
    EXPECT_NE(found.reason.find(fault.reason), std::string::npos) << found.reason;
  }
}

TEST(ReadCsv, FillsASheetToItsLimitsAndNoFurther) {
  MemorySheet tall(u"Sheet1");
  std::string rows;
  for (std::int32_t row = 1; row <= MemorySheet::kRowLimit; ++row) rows += "7\n";
  ASSERT_EQ(ReadCsv(rows, tall), std::nullopt);
  EXPECT_EQ(tall.UsedRows(), MemorySheet::kRowLimit);
  EXPECT_EQ(FaultOf(rows + "7").line, 1'048'577U);

  const std::string widest(MemorySheet::kColumnLimit - 1, ',');
  MemorySheet wide(u"Sheet1");
  ASSERT_EQ(ReadCsv(widest + "x", wide), std::nullopt);
  EXPECT_EQ(wide.CellText({u"XFD", 1}), u"x");
  EXPECT_EQ(FaultOf("a\n" + widest + "x,").line, 2U);
}

TEST(WriteCsv, WritesWhatReadCsvReads) {
  const Rows rows{{u"plain", u"", u"a,b"}, {u"say \"hi\"", u"two\r\nlines", u" é話 "}};
  MemorySheet sheet(u"Sheet1");
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      sheet.Write({ColumnLetters(static_cast<std::int32_t>(column + 1)), static_cast<std::int32_t>(row + 1)},
                  rows[row][column]);
    }
  }
  std::ostringstream out;
  WriteCsv(sheet, out);
  EXPECT_EQ(out.str(), "plain,,\"a,b\"\r\n\"say \"\"hi\"\"\",\"two\r\nlines\", é話 \r\n");
  EXPECT_EQ(Read(out.str()), rows);
}

TEST(ReadCsvFile, SaysWhyAFileCannotBeRead) {
  MemorySheet sheet(u"Sheet1");
  const auto missing = ReadCsvFile("no/such/file.csv", sheet);
  ASSERT_TRUE(missing.has_value());
  EXPECT_EQ(missing->line, 0U);
  EXPECT_EQ(missing->reason, "No such file or directory");
  const auto folder = ReadCsvFile("/", sheet);
  ASSERT_TRUE(folder.has_value());
  EXPECT_EQ(folder->reason, "Is a directory");
}

}  // namespace
}  // namespace quorvel
