#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/cell_value.h"
#include "platform/command_bars.h"
#include "platform/text.h"

namespace quorvel {

// A cell in A1 notation, taken apart: column letters as the user chose them, row from 1. A host that cannot
// make a cell of it (no letters, row 0 or beyond the sheet) throws RuntimeError 1004.
struct CellAddress {
  TextView column;
  std::int32_t row = 0;
};

// "B12".
[[nodiscard]] Text A1(const CellAddress& address);
// 1 for "A", 27 for "AA"; 0 when `letters` is no column.
[[nodiscard]] std::int32_t ColumnNumber(TextView letters);
// "A" for 1, "AA" for 27. `number` is at least 1.
[[nodiscard]] Text ColumnLetters(std::int32_t number);

// Every member throws RuntimeError when the host refuses (a chart sheet, a protected sheet, a cell being
// edited).
class Sheet {
 public:
  virtual ~Sheet() = default;

  // The last row that the used range reaches, counted from the top of the sheet; 1 on an empty sheet.
  [[nodiscard]] virtual std::int32_t UsedRows() = 0;
  // The last column that the used range reaches; 1 on an empty sheet.
  [[nodiscard]] virtual std::int32_t UsedColumns() = 0;
  // The number of rows a sheet can have.
  [[nodiscard]] virtual std::int32_t RowLimit() = 0;
  [[nodiscard]] virtual CellValue Value(const CellAddress& address) = 0;
  // What the sheet displays.
  [[nodiscard]] virtual Text CellText(const CellAddress& address) = 0;
  // `column` from 1.
  virtual void SelectColumn(std::int32_t column) = 0;
  // Writes text as it stands: "007" stays a text.
  virtual void Write(const CellAddress& address, TextView text) = 0;
  virtual void BoldCell(const CellAddress& address) = 0;
};

class Workbook {
 public:
  virtual ~Workbook() = default;

  // The sheet that the user is looking at. Throws when it is none with cells.
  [[nodiscard]] virtual std::unique_ptr<Sheet> ActiveSheet() = 0;
  [[nodiscard]] virtual std::vector<Text> SheetNames() = 0;
  // A new sheet of that name, which becomes the active one. Throws, leaving no sheet behind, when the host
  // refuses the name.
  virtual std::unique_ptr<Sheet> AddSheet(TextView name) = 0;
};

// The spreadsheet application that the add-in is connected to.
class Application {
 public:
  virtual ~Application() = default;

  // Null when no workbook is open.
  [[nodiscard]] virtual std::unique_ptr<Workbook> ActiveWorkbook() = 0;
  [[nodiscard]] virtual CommandBars& Bars() = 0;
};

}  // namespace quorvel
