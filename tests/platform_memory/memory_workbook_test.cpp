#include "platform/memory/memory_workbook.h"

#include <gtest/gtest.h>

#include "platform/memory/failing_platform.h"
#include "platform/runtime_error.h"

namespace quorvel {
namespace {

int ErrorNumberOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return 0;
}

TEST(MemoryApplication, HasNoWorkbookUntilOneIsOpened) {
  MemoryApplication application;
  EXPECT_EQ(application.ActiveWorkbook(), nullptr);
  application.OpenWorkbook();
  ASSERT_NE(application.ActiveWorkbook(), nullptr);
  application.CloseWorkbook();
  EXPECT_EQ(application.ActiveWorkbook(), nullptr);
}

TEST(MemorySheet, ValueAndTextDifferWhereTheSheetFormatsTheValue) {
  MemorySheet sheet(u"Data");
  sheet.Set({u"A", 1}, 447700900123.0);
  sheet.Set({u"B", 1}, 0.5, u"50%");
  sheet.Set({u"C", 1}, true);
  sheet.Set({u"D", 1}, CellError{2042});
  sheet.Set({u"E", 1}, Text(u"007"));
  sheet.Set({u"F", 1}, Date{40000});

  EXPECT_EQ(sheet.Value({u"A", 1}), CellValue(447700900123.0));
  EXPECT_EQ(sheet.CellText({u"A", 1}), u"447700900123");
  EXPECT_EQ(sheet.Value({u"b", 1}), CellValue(0.5));
  EXPECT_EQ(sheet.CellText({u"b", 1}), u"50%");
  EXPECT_EQ(sheet.Value({u"C", 1}), CellValue(true));
  EXPECT_EQ(sheet.CellText({u"C", 1}), u"TRUE");
  EXPECT_EQ(sheet.Value({u"D", 1}), CellValue(CellError{2042}));
  EXPECT_EQ(sheet.CellText({u"D", 1}), u"#N/A");
  EXPECT_EQ(sheet.Value({u"E", 1}), CellValue(Text(u"007")));
  EXPECT_EQ(sheet.CellText({u"E", 1}), u"007");
  EXPECT_EQ(sheet.Value({u"F", 1}), CellValue(Date{40000}));
  EXPECT_EQ(sheet.Value({u"Z", 9}), CellValue());
  EXPECT_EQ(sheet.CellText({u"Z", 9}), u"");
}

TEST(MemorySheet, UsedRangeReachesTheLastCellThatIsNotEmpty) {
  MemorySheet sheet(u"Data");
  EXPECT_EQ(sheet.UsedRows(), 1);
  EXPECT_EQ(sheet.UsedColumns(), 1);
  sheet.Write({u"C", 40}, u"x");
  sheet.Write({u"B", 7}, u"y");
  EXPECT_EQ(sheet.UsedRows(), 40);
  EXPECT_EQ(sheet.UsedColumns(), 3);
  sheet.Write({u"C", 40}, u"");
  EXPECT_EQ(sheet.UsedRows(), 7);
  EXPECT_EQ(sheet.UsedColumns(), 2);
  EXPECT_EQ(sheet.Value({u"C", 40}), CellValue());
}

TEST(MemorySheet, RemembersTheColumnThatWasSelected) {
  MemorySheet sheet(u"Data");
  EXPECT_THROW(sheet.SelectColumn(0), RuntimeError);
  EXPECT_EQ(sheet.selected_column(), 0);
  sheet.SelectColumn(3);
  EXPECT_EQ(sheet.selected_column(), 3);
}

TEST(MemorySheet, RefusesCellsOutsideTheGrid) {
  MemorySheet sheet(u"Data");
  sheet.Write({u"XFD", 1'048'576}, u"last");
  EXPECT_EQ(sheet.CellText({u"xfd", 1'048'576}), u"last");
  for (const CellAddress& address :
       {CellAddress{u"A", 0}, CellAddress{u"A", 1'048'577}, CellAddress{u"A", -1}, CellAddress{u"XFE", 1},
        CellAddress{u"", 1}, CellAddress{u"A1", 1}, CellAddress{u"[", 1}}) {
    EXPECT_EQ(ErrorNumberOf([&] { (void)sheet.Value(address); }), 1004) << ToUtf8(A1(address));
    EXPECT_EQ(ErrorNumberOf([&] { sheet.Write(address, u"x"); }), 1004) << ToUtf8(A1(address));
  }
}

TEST(MemoryWorkbook, AddsASheetInFrontAndMakesItActive) {
  MemoryWorkbook workbook(u"Data");
  const auto data = workbook.ActiveSheet();
  const auto report = workbook.AddSheet(u"Report");
  report->Write({u"A", 1}, u"Number");
  report->BoldCell({u"A", 1});

  EXPECT_EQ(workbook.SheetNames(), (std::vector<Text>{u"Report", u"Data"}));
  EXPECT_EQ(workbook.active().name(), u"Report");
  EXPECT_TRUE(workbook.active().Bold({u"A", 1}));
  EXPECT_FALSE(workbook.active().Bold({u"A", 2}));
  EXPECT_EQ(data->CellText({u"A", 1}), u"");  // a handle keeps its sheet
}

TEST(MemoryWorkbook, RefusesSheetNamesAsTheHostDoes) {
  MemoryWorkbook workbook(u"Data");
  const Text longest(31, u'n');
  for (const Text& name : {Text(), longest + u"n", Text(u"dATA"), Text(u"a:b"), Text(u"a\\b"), Text(u"a/b"),
                           Text(u"a?b"), Text(u"a*b"), Text(u"[a"), Text(u"a]")}) {
    EXPECT_EQ(ErrorNumberOf([&] { workbook.AddSheet(name); }), 1004) << ToUtf8(name);
  }
  EXPECT_EQ(workbook.SheetNames().size(), 1U);
  workbook.AddSheet(longest);
  EXPECT_NE(workbook.Find(longest), nullptr);
}

TEST(FailingApplication, FailsTheCallWhoseTurnItIsAndForwardsTheOthers) {
  MemoryApplication application;
  application.OpenWorkbook().active().Write({u"A", 1}, u"x");
  Faults faults;
  FailingApplication failing(application, faults);
  faults.Fail("Sheet::CellText", 2, 1);
  faults.Fail("Workbook::AddSheet");

  const auto workbook = failing.ActiveWorkbook();
  const auto sheet = workbook->ActiveSheet();
  EXPECT_EQ(sheet->CellText({u"A", 1}), u"x");
  EXPECT_EQ(ErrorNumberOf([&] { (void)sheet->CellText({u"A", 1}); }), 1004);
  EXPECT_EQ(sheet->CellText({u"A", 1}), u"x");
  EXPECT_EQ(ErrorNumberOf([&] { workbook->AddSheet(u"Report"); }), 1004);
  EXPECT_EQ(ErrorNumberOf([&] { workbook->AddSheet(u"Report"); }), 1004);
  EXPECT_EQ(workbook->SheetNames().size(), 1U);
}

}  // namespace
}  // namespace quorvel
