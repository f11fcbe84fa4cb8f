#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/workbook.h"
#include "tests/platform/expect_error.h"

namespace quorvel {

inline constexpr int kApplicationError = 1004;

// What every spreadsheet application does. `Fixture` has no workbook open at first; it has
//   Application& application()
//   void OpenWorkbook(TextView sheet), with one empty sheet, and void CloseWorkbook()
//   void Set(CellAddress, CellValue, std::optional<Text> display), as a user fills a cell of the active sheet
//   std::int32_t selected_column() and bool Bold(CellAddress), of the active sheet
template <class Fixture>
class WorkbookContract : public testing::Test {
 protected:
  Fixture fixture_;
};

TYPED_TEST_SUITE_P(WorkbookContract);

TYPED_TEST_P(WorkbookContract, HasNoWorkbookUntilOneIsOpened) {
  auto& host = this->fixture_;
  EXPECT_EQ(host.application().ActiveWorkbook(), nullptr);
  host.OpenWorkbook(u"Data");
  ASSERT_NE(host.application().ActiveWorkbook(), nullptr);
  host.CloseWorkbook();
  EXPECT_EQ(host.application().ActiveWorkbook(), nullptr);
}

TYPED_TEST_P(WorkbookContract, ReadsValuesOfEveryKindAndWhatTheSheetShows) {
  auto& host = this->fixture_;
  host.OpenWorkbook(u"Data");
  host.Set({u"A", 1}, 447700900123.0, std::nullopt);
  host.Set({u"B", 1}, 0.5, u"50%");
  host.Set({u"C", 1}, true, u"TRUE");
  host.Set({u"D", 1}, CellError{2042}, u"#N/A");
  host.Set({u"E", 1}, Text(u"007 \u05D0"), std::nullopt);
  host.Set({u"AF", 1}, Date{40000}, u"07/06/2009");
  const auto sheet = host.application().ActiveWorkbook()->ActiveSheet();
  EXPECT_EQ(sheet->Value({u"A", 1}), CellValue(447700900123.0));
  EXPECT_EQ(sheet->CellText({u"A", 1}), u"447700900123");
  EXPECT_EQ(sheet->Value({u"b", 1}), CellValue(0.5));
  EXPECT_EQ(sheet->CellText({u"b", 1}), u"50%");
  EXPECT_EQ(sheet->Value({u"C", 1}), CellValue(true));
  EXPECT_EQ(sheet->Value({u"D", 1}), CellValue(CellError{2042}));
  EXPECT_EQ(sheet->CellText({u"D", 1}), u"#N/A");
  EXPECT_EQ(sheet->Value({u"E", 1}), CellValue(Text(u"007 \u05D0")));
  EXPECT_EQ(sheet->CellText({u"E", 1}), u"007 \u05D0");
  EXPECT_EQ(sheet->Value({u"AF", 1}), CellValue(Date{40000}));
  EXPECT_EQ(sheet->Value({u"Z", 9}), CellValue());
  EXPECT_EQ(sheet->CellText({u"Z", 9}), u"");
}

TYPED_TEST_P(WorkbookContract, CountsTheUsedRangeFromTheTopOfTheSheet) {
  auto& host = this->fixture_;
  host.OpenWorkbook(u"Data");
  const auto sheet = host.application().ActiveWorkbook()->ActiveSheet();
  EXPECT_EQ(sheet->UsedRows(), 1);
  EXPECT_EQ(sheet->UsedColumns(), 1);
  host.Set({u"C", 40}, Text(u"x"), std::nullopt);
  host.Set({u"AB", 7}, Text(u"y"), std::nullopt);
  EXPECT_EQ(sheet->UsedRows(), 40);
  EXPECT_EQ(sheet->UsedColumns(), 28);
  EXPECT_EQ(sheet->RowLimit(), 1'048'576);
  sheet->SelectColumn(3);
  EXPECT_EQ(host.selected_column(), 3);
}

TYPED_TEST_P(WorkbookContract, WritesTextAsItStands) {
  auto& host = this->fixture_;
  host.OpenWorkbook(u"Data");
  const auto sheet = host.application().ActiveWorkbook()->ActiveSheet();
  for (const TextView text : {TextView(u"007"), TextView(u"=1+1"), TextView(u"'quoted'"), TextView(u"1E5"),
                              TextView(u"\u05D0\u20AC")}) {
    sheet->Write({u"B", 7}, text);
    EXPECT_EQ(sheet->Value({u"B", 7}), CellValue(Text(text)));
  }
  sheet->Write({u"B", 7}, u"");
  EXPECT_EQ(sheet->Value({u"B", 7}), CellValue());
}

TYPED_TEST_P(WorkbookContract, RefusesWhatIsNoCell) {
  auto& host = this->fixture_;
  host.OpenWorkbook(u"Data");
  const auto sheet = host.application().ActiveWorkbook()->ActiveSheet();
  sheet->Write({u"XFD", 1'048'576}, u"last");
  EXPECT_EQ(sheet->CellText({u"xfd", 1'048'576}), u"last");
  for (const CellAddress& address :
       {CellAddress{u"A", 0}, CellAddress{u"A", 1'048'577}, CellAddress{u"A", -1}, CellAddress{u"XFE", 1},
        CellAddress{u"", 1}, CellAddress{u"A1", 1}, CellAddress{u"[", 1}, CellAddress{u"A:", 1},
        CellAddress{u"Total", 1}}) {
    EXPECT_EQ(ErrorOf([&] { return sheet->Value(address); }), kApplicationError) << ToUtf8(A1(address));
    EXPECT_EQ(ErrorOf([&] { sheet->Write(address, u"x"); }), kApplicationError) << ToUtf8(A1(address));
  }
}

TYPED_TEST_P(WorkbookContract, AddsASheetInFrontAndMakesItActive) {
  auto& host = this->fixture_;
  host.OpenWorkbook(u"Data");
  const auto workbook = host.application().ActiveWorkbook();
  const auto data = workbook->ActiveSheet();
  const auto report = workbook->AddSheet(u"Report");
  report->Write({u"A", 1}, u"Number");
  report->BoldCell({u"A", 1});
  EXPECT_EQ(workbook->SheetNames(), (std::vector<Text>{u"Report", u"Data"}));
  EXPECT_EQ(workbook->ActiveSheet()->CellText({u"A", 1}), u"Number");
  EXPECT_TRUE(host.Bold({u"A", 1}));
  EXPECT_FALSE(host.Bold({u"A", 2}));
  EXPECT_EQ(data->CellText({u"A", 1}), u"") << "a handle keeps its sheet";
}

TYPED_TEST_P(WorkbookContract, ARefusedSheetNameLeavesNoSheetBehind) {
  auto& host = this->fixture_;
  host.OpenWorkbook(u"Data");
  host.Set({u"A", 1}, Text(u"mine"), std::nullopt);
  const auto workbook = host.application().ActiveWorkbook();
  const Text longest(31, u'n');
  for (const Text& name : {Text(), longest + u"n", Text(u"dATA"), Text(u"a:b"), Text(u"a\\b"), Text(u"a/b"),
                           Text(u"a?b"), Text(u"a*b"), Text(u"[a"), Text(u"a]")}) {
    EXPECT_EQ(ErrorOf([&] { return workbook->AddSheet(name); }), kApplicationError) << ToUtf8(name);
  }
  EXPECT_EQ(workbook->SheetNames(), (std::vector<Text>{u"Data"}));
  EXPECT_EQ(workbook->ActiveSheet()->CellText({u"A", 1}), u"mine");
  workbook->AddSheet(longest);
  EXPECT_EQ(workbook->SheetNames().front(), longest);
}

REGISTER_TYPED_TEST_SUITE_P(WorkbookContract, HasNoWorkbookUntilOneIsOpened,
                            ReadsValuesOfEveryKindAndWhatTheSheetShows,
                            CountsTheUsedRangeFromTheTopOfTheSheet, WritesTextAsItStands, RefusesWhatIsNoCell,
                            AddsASheetInFrontAndMakesItActive, ARefusedSheetNameLeavesNoSheetBehind);

}  // namespace quorvel
