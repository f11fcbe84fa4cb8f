#include "platform/memory/memory_workbook.h"

#include <gtest/gtest.h>

#include "platform/memory/failing_platform.h"
#include "tests/contracts/workbook_contract.h"

namespace quorvel {
namespace {

struct MemoryHost {
  Application& application() { return memory; }
  void OpenWorkbook(TextView sheet) { memory.OpenWorkbook(sheet); }
  void CloseWorkbook() { memory.CloseWorkbook(); }
  void Set(const CellAddress& address, const CellValue& value, const std::optional<Text>& display) {
    if (display) return memory.workbook()->active().Set(address, value, *display);
    memory.workbook()->active().Set(address, value);
  }
  std::int32_t selected_column() { return memory.workbook()->active().selected_column(); }
  bool Bold(const CellAddress& address) { return memory.workbook()->active().Bold(address); }

  MemoryApplication memory;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WorkbookContract, MemoryHost);

TEST(MemorySheet, ShowsTruthsAndErrorsAsTheApplicationDoes) {
  MemorySheet sheet(u"Data");
  sheet.Set({u"C", 1}, true);
  sheet.Set({u"D", 1}, CellError{2042});
  EXPECT_EQ(sheet.CellText({u"C", 1}), u"TRUE");
  EXPECT_EQ(sheet.CellText({u"D", 1}), u"#N/A");
}

TEST(MemorySheet, UsedRangeShrinksWithItsCells) {
  MemorySheet sheet(u"Data");
  sheet.Write({u"C", 40}, u"x");
  sheet.Write({u"B", 7}, u"y");
  sheet.Write({u"C", 40}, u"");
  EXPECT_EQ(sheet.UsedRows(), 7);
  EXPECT_EQ(sheet.UsedColumns(), 2);
}

TEST(MemorySheet, RemembersTheColumnThatWasSelected) {
  MemorySheet sheet(u"Data");
  EXPECT_THROW(sheet.SelectColumn(0), RuntimeError);
  EXPECT_EQ(sheet.selected_column(), 0);
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
  EXPECT_EQ(ErrorOf([&] { return sheet->CellText({u"A", 1}); }), 1004);
  EXPECT_EQ(sheet->CellText({u"A", 1}), u"x");
  EXPECT_EQ(ErrorOf([&] { return workbook->AddSheet(u"Report"); }), 1004);
  EXPECT_EQ(ErrorOf([&] { return workbook->AddSheet(u"Report"); }), 1004);
  EXPECT_EQ(workbook->SheetNames().size(), 1U);
}

}  // namespace
}  // namespace quorvel
