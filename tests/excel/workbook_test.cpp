// The workbook interface over the object model that the stand-in exposes.

#include <gtest/gtest.h>

#include "hosts/excel/excel_workbook.h"
#include "platform/runtime_error.h"
#include "tests/excel/application.h"

namespace quorvel::tests {
namespace {

int NumberOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return 0;
}

class ExcelWorkbookTest : public testing::Test {
 protected:
  void TearDown() override { Automation::rejection = S_OK; }

  StandIn stand_in_;
  ExcelApplication application_{stand_in_.object()};
  std::shared_ptr<SheetData> data_ = stand_in_.book->Add(u"People");
};

TEST_F(ExcelWorkbookTest, ReadsValuesAndWhatTheSheetShows) {
  data_->At(2, 3).value = Variant(9876543211.0);
  data_->At(2, 3).display = u"9.88E+09";
  data_->At(5, 28).value = Variant::Error(2007);
  const auto sheet = application_.ActiveWorkbook()->ActiveSheet();
  EXPECT_EQ(sheet->UsedRows(), 5) << "counted from the top of the sheet, not of the used range";
  EXPECT_EQ(sheet->UsedColumns(), 28);
  EXPECT_EQ(sheet->RowLimit(), 1048576);
  EXPECT_EQ(sheet->Value({u"C", 2}), CellValue(9876543211.0));
  EXPECT_EQ(sheet->CellText({u"C", 2}), u"9.88E+09");
  EXPECT_EQ(sheet->Value({u"AB", 5}), CellValue(CellError{2007}));
  EXPECT_EQ(sheet->Value({u"A", 1}), CellValue());
  EXPECT_EQ(sheet->CellText({u"A", 1}), u"");
  sheet->SelectColumn(3);
  EXPECT_EQ(data_->selected_column, 3);
}

TEST_F(ExcelWorkbookTest, WritesTextAsItStands) {
  const auto sheet = application_.ActiveWorkbook()->ActiveSheet();
  for (const TextView text : {TextView(u"007"), TextView(u"=1+1"), TextView(u"'quoted'"), TextView(u"1E5"),
                              TextView(u""), TextView(u"\u05D0\u20AC")}) {
    sheet->Write({u"B", 7}, text);
    EXPECT_EQ(sheet->Value({u"B", 7}), CellValue(Text(text)));
  }
  sheet->BoldCell({u"B", 7});
  EXPECT_TRUE(data_->At(7, 2).bold);
}

TEST_F(ExcelWorkbookTest, RefusesWhatIsNoCell) {
  const auto sheet = application_.ActiveWorkbook()->ActiveSheet();
  for (const CellAddress address : {CellAddress{u"", 1}, CellAddress{u"A", 0}, CellAddress{u"A", 1048577},
                                    CellAddress{u"Total", 1}, CellAddress{u"A:", 1}, CellAddress{u"1", 1}}) {
    EXPECT_EQ(NumberOf([&] { static_cast<void>(sheet->Value(address)); }), 1004);
  }
}

TEST_F(ExcelWorkbookTest, AddsANamedSheetOrNone) {
  const auto workbook = application_.ActiveWorkbook();
  workbook->AddSheet(u"Report")->Write({u"A", 1}, u"x");
  EXPECT_EQ(workbook->SheetNames(), (std::vector<Text>{u"Report", u"People"}));
  EXPECT_EQ(stand_in_.book->active->name, u"Report");
  EXPECT_EQ(stand_in_.book->active->TextAt(1, 1), u"x");

  const auto before = stand_in_.book->sheets;
  stand_in_.book->active = data_;
  for (const TextView name : {TextView(u"REPORT"), TextView(u"a/b"), TextView(u"")}) {
    EXPECT_EQ(NumberOf([&] { workbook->AddSheet(name); }), 1004);
    EXPECT_EQ(stand_in_.book->sheets, before);
    EXPECT_EQ(stand_in_.book->active, data_);
    EXPECT_TRUE(stand_in_.display_alerts);
  }
}

TEST_F(ExcelWorkbookTest, TellsNoWorkbookAChartAProtectedSheetAndABusyHostApart) {
  const auto workbook = application_.ActiveWorkbook();
  data_->is_protected = true;
  EXPECT_EQ(NumberOf([&] { workbook->ActiveSheet()->Write({u"A", 1}, u"x"); }), 1004);
  data_->chart = true;
  EXPECT_EQ(NumberOf([&] { static_cast<void>(workbook->ActiveSheet()); }), 438);
  Automation::rejection = static_cast<HRESULT>(0x800AC472);
  EXPECT_EQ(NumberOf([&] { static_cast<void>(workbook->ActiveSheet()); }), 50290);
  Automation::rejection = S_OK;
  stand_in_.book = nullptr;
  EXPECT_EQ(application_.ActiveWorkbook(), nullptr);
}

}  // namespace
}  // namespace quorvel::tests
