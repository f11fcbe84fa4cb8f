#pragma once

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <map>
#include <memory>
#include <optional>

#include "hosts/calc/calc_cells.h"
#include "hosts/calc/change_watch.h"
#include "hosts/calc/column_block.h"
#include "hosts/calc/main_thread.h"
#include "platform/workbook.h"

namespace quorvel {

// A sheet of an open document. Rows are fetched ahead, and anew when the sheet has changed.
class CalcSheet : public Sheet {
 public:
  CalcSheet(const Context& context, const css::uno::Reference<css::frame::XController>& controller,
            const css::uno::Reference<css::sheet::XSpreadsheet>& sheet);
  CalcSheet(const CalcSheet&) = delete;
  CalcSheet& operator=(const CalcSheet&) = delete;
  ~CalcSheet() override;

  [[nodiscard]] std::int32_t UsedRows() override;
  [[nodiscard]] std::int32_t UsedColumns() override;
  [[nodiscard]] std::int32_t RowLimit() override;
  [[nodiscard]] CellValue Value(const CellAddress& address) override;
  [[nodiscard]] Text CellText(const CellAddress& address) override;
  void SelectColumn(std::int32_t column) override;
  // The window is repainted when the sheet is let go.
  void Write(const CellAddress& address, TextView text) override;
  void BoldCell(const CellAddress& address) override;

 private:
  struct Position {
    std::int32_t column = 0;
    std::int32_t row = 0;
  };

  [[nodiscard]] Position Find(const CellAddress& address) const;
  [[nodiscard]] css::uno::Reference<css::table::XCell> Cell(const Position& position) const;
  [[nodiscard]] const ColumnBlock& Block(const Position& position);
  // A cell to be changed. The application ignores changes of a protected sheet: this throws instead.
  [[nodiscard]] css::uno::Reference<css::table::XCell> Writable(const CellAddress& address);
  [[nodiscard]] css::table::CellRangeAddress UsedRange() const;

  css::uno::Reference<css::frame::XController> controller_;
  css::uno::Reference<css::frame::XModel> document_;
  css::uno::Reference<css::sheet::XSpreadsheet> sheet_;
  CellReader reader_;
  std::int32_t row_limit_ = 0;
  std::int32_t column_limit_ = 0;
  std::optional<ChangeWatch> watch_;            // of the cells in blocks_
  std::map<std::int32_t, ColumnBlock> blocks_;  // by column, from 0
  bool repaint_locked_ = false;
};

// The document in a window of the application.
class CalcWorkbook : public Workbook {
 public:
  CalcWorkbook(const Context& context, const css::uno::Reference<css::frame::XController>& controller);

  [[nodiscard]] std::unique_ptr<Sheet> ActiveSheet() override;
  [[nodiscard]] std::vector<Text> SheetNames() override;
  std::unique_ptr<Sheet> AddSheet(TextView name) override;

 private:
  Context context_;
  css::uno::Reference<css::frame::XController> controller_;
  css::uno::Reference<css::sheet::XSpreadsheetDocument> document_;
};

}  // namespace quorvel
