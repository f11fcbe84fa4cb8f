#include "hosts/excel/excel_workbook.h"

#include "hosts/excel/log.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

// Without its own letters an address could hit a name that the user defined ("Total" and 1).
void CheckAddress(const CellAddress& address) {
  if (ColumnNumber(address.column) == 0 || address.row < 1) {
    throw RuntimeError(1004, u"Method 'Range' of object '_Worksheet' failed");
  }
}

std::int32_t LastOf(const AutomationObject& used, std::wstring_view first, std::wstring_view lines) {
  return used.Get(first).ToLong() + used.GetChild(lines).Get(L"Count").ToLong() - 1;
}

}  // namespace

AutomationObject ExcelSheet::Range(const CellAddress& address) {
  CheckAddress(address);
  return AutomationObject(sheet_.Get(range_, {Variant(A1(address))}).ToObject());
}

std::int32_t ExcelSheet::UsedRows() {
  return LastOf(sheet_.GetChild(L"UsedRange"), L"Row", L"Rows");
}

std::int32_t ExcelSheet::UsedColumns() {
  return LastOf(sheet_.GetChild(L"UsedRange"), L"Column", L"Columns");
}

std::int32_t ExcelSheet::RowLimit() {
  return sheet_.GetChild(L"Rows").Get(L"Count").ToLong();
}

CellValue ExcelSheet::Value(const CellAddress& address) {
  return ToCellValue(Range(address).Get(value_).get());
}

Text ExcelSheet::CellText(const CellAddress& address) {
  return ToText(ToCellValue(Range(address).Get(text_).get()));
}

void ExcelSheet::SelectColumn(std::int32_t column) {
  sheet_.GetChild(L"Columns", {Variant(column)}).Call(L"Select");
}

void ExcelSheet::Write(const CellAddress& address, TextView text) {
  const AutomationObject range = Range(address);
  range.Put(L"NumberFormat", Variant(TextView(u"@")));
  // Excel takes one leading apostrophe for its own "this is text" mark.
  const bool marked = text.starts_with(u'\'');
  range.Put(L"Value", Variant(marked ? u"'" + Text(text) : Text(text)));
}

void ExcelSheet::BoldCell(const CellAddress& address) {
  Range(address).GetChild(L"Font").Put(L"Bold", Variant(true));
}

std::unique_ptr<Sheet> ExcelWorkbook::ActiveSheet() {
  AutomationObject sheet = workbook_.GetChild(L"ActiveSheet");
  if (!sheet.Has(L"UsedRange")) {  // a chart sheet
    throw RuntimeError(438, u"Object doesn't support this property or method");
  }
  return std::make_unique<ExcelSheet>(std::move(sheet));
}

std::vector<Text> ExcelWorkbook::SheetNames() {
  const AutomationObject sheets = workbook_.GetChild(L"Worksheets");
  const std::int32_t count = sheets.Get(L"Count").ToLong();
  std::vector<Text> names;
  for (std::int32_t index = 1; index <= count; ++index) {
    names.push_back(sheets.GetChild(L"Item", {Variant(index)}).Get(L"Name").ToText());
  }
  return names;
}

std::unique_ptr<Sheet> ExcelWorkbook::AddSheet(TextView name) {
  const AutomationObject former = workbook_.GetChild(L"ActiveSheet");
  AutomationObject sheet = workbook_.GetChild(L"Worksheets").GetChild(L"Add");
  try {
    sheet.Put(L"Name", Variant(name));
  } catch (const RuntimeError&) {
    DeleteQuietly(sheet);
    former.Call(L"Activate");
    throw;
  }
  return std::make_unique<ExcelSheet>(std::move(sheet));
}

// Without the question that Excel asks the user before it deletes a sheet.
void ExcelWorkbook::DeleteQuietly(const AutomationObject& sheet) const {
  const bool alerts = application_.Get(L"DisplayAlerts").ToBool();
  application_.Put(L"DisplayAlerts", Variant(false));
  try {
    sheet.Call(L"Delete");
  } catch (const RuntimeError& error) {
    Log("Worksheet.Delete", error.what());
  }
  application_.Put(L"DisplayAlerts", Variant(alerts));
}

std::unique_ptr<Workbook> ExcelApplication::ActiveWorkbook() {
  AutomationObject workbook = application_.GetChild(L"ActiveWorkbook");
  if (workbook.IsNothing()) return nullptr;
  return std::make_unique<ExcelWorkbook>(application_, std::move(workbook));
}

HWND ExcelApplication::Window() const {
  try {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(application_.Get(L"Hwnd").ToLong()));
  } catch (const RuntimeError& error) {
    Log("Application.Hwnd", error.what());
    return nullptr;
  }
}

}  // namespace quorvel
