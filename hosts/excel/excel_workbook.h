#pragma once

#include "hosts/excel/dispatch.h"
#include "hosts/excel/excel_command_bars.h"
#include "platform/workbook.h"

namespace quorvel {

// Excel's object model behind the core's interfaces. Everything is late bound, so that any version of Excel
// serves. All of these belong to the thread that Excel called the add-in on.

class ExcelSheet : public Sheet {
 public:
  explicit ExcelSheet(AutomationObject sheet) : sheet_(std::move(sheet)) {}

  [[nodiscard]] std::int32_t UsedRows() override;
  [[nodiscard]] std::int32_t UsedColumns() override;
  [[nodiscard]] std::int32_t RowLimit() override;
  [[nodiscard]] CellValue Value(const CellAddress& address) override;
  [[nodiscard]] Text CellText(const CellAddress& address) override;
  void SelectColumn(std::int32_t column) override;
  void Write(const CellAddress& address, TextView text) override;
  void BoldCell(const CellAddress& address) override;

 private:
  [[nodiscard]] AutomationObject Range(const CellAddress& address);

  AutomationObject sheet_;
  Member range_{L"Range"};
  Member value_{L"Value"};
  Member text_{L"Text"};
};

class ExcelWorkbook : public Workbook {
 public:
  ExcelWorkbook(AutomationObject application, AutomationObject workbook)
      : application_(std::move(application)), workbook_(std::move(workbook)) {}

  [[nodiscard]] std::unique_ptr<Sheet> ActiveSheet() override;
  [[nodiscard]] std::vector<Text> SheetNames() override;
  std::unique_ptr<Sheet> AddSheet(TextView name) override;

 private:
  void DeleteQuietly(const AutomationObject& sheet) const;

  AutomationObject application_;
  AutomationObject workbook_;
};

class ExcelApplication : public Application {
 public:
  ExcelApplication(const ComPtr<IDispatch>& application, ClickOwner owner)
      : application_(application), bars_(application_, std::move(owner)) {}

  [[nodiscard]] std::unique_ptr<Workbook> ActiveWorkbook() override;
  [[nodiscard]] CommandBars& Bars() override { return bars_; }
  // The window that dialogs belong to; null when the host does not tell.
  [[nodiscard]] HWND Window() const;

 private:
  AutomationObject application_;
  ExcelCommandBars bars_;
};

}  // namespace quorvel
