// The workbook interface over the object model that the stand-in exposes.

#include <gtest/gtest.h>

#include "hosts/excel/excel_workbook.h"
#include "tests/contracts/workbook_contract.h"
#include "tests/excel/application.h"

namespace quorvel::tests {
namespace {

struct ExcelHost {
  ExcelHost() { stand_in.book = nullptr; }

  Application& application() { return excel; }
  void OpenWorkbook(TextView sheet) {
    stand_in.book = std::make_shared<BookData>();
    stand_in.book->Add(sheet);
  }
  void CloseWorkbook() { stand_in.book = nullptr; }
  void Set(const CellAddress& address, const CellValue& value, const std::optional<Text>& display) {
    Cell& cell = CellAt(address);
    cell.value = ToVariant(value);
    cell.display = display;
  }
  std::int32_t selected_column() { return stand_in.book->active->selected_column; }
  bool Bold(const CellAddress& address) { return CellAt(address).bold; }
  Cell& CellAt(const CellAddress& address) {
    return stand_in.book->active->At(address.row, ColumnNumber(address.column));
  }

  StandIn stand_in;
  ExcelApplication excel{stand_in.object(), [] { return nullptr; }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Excel, WorkbookContract, ExcelHost);

class ExcelWorkbookTest : public testing::Test {
 protected:
  void TearDown() override { Automation::rejection = S_OK; }

  StandIn stand_in_;
  ExcelApplication application_{stand_in_.object(), [] { return nullptr; }};
  std::shared_ptr<SheetData> data_ = stand_in_.book->Add(u"People");
};

TEST_F(ExcelWorkbookTest, ASheetOfARefusedNameGoesWithoutAQuestion) {
  const auto workbook = application_.ActiveWorkbook();
  EXPECT_EQ(ErrorOf([&] { return workbook->AddSheet(u"a/b"); }), kApplicationError);
  EXPECT_FALSE(stand_in_.book->asked_to_delete);
  EXPECT_TRUE(stand_in_.book->display_alerts);
}

TEST_F(ExcelWorkbookTest, TellsNoWorkbookAChartAProtectedSheetAndABusyHostApart) {
  const auto workbook = application_.ActiveWorkbook();
  data_->is_protected = true;
  EXPECT_EQ(ErrorOf([&] { workbook->ActiveSheet()->Write({u"A", 1}, u"x"); }), 1004);
  data_->chart = true;
  EXPECT_EQ(ErrorOf([&] { return workbook->ActiveSheet(); }), 438);
  Automation::rejection = static_cast<HRESULT>(0x800AC472);
  EXPECT_EQ(ErrorOf([&] { return workbook->ActiveSheet(); }), 50290);
  Automation::rejection = S_OK;
  stand_in_.book = nullptr;
  EXPECT_EQ(application_.ActiveWorkbook(), nullptr);
}

}  // namespace
}  // namespace quorvel::tests
