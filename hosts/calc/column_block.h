#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "hosts/calc/calc_cells.h"

namespace quorvel {

// Some rows of one column, fetched in one call, which is several times faster than cell by cell. Answers
// only where the cells cannot be anything else: of one number format and, for numbers, no formula. Members
// throw UNO exceptions. Rows and columns from 0.
class ColumnBlock {
 public:
  ColumnBlock(const css::uno::Reference<css::sheet::XSpreadsheet>& sheet, CellReader& reader,
              std::int32_t column, std::int32_t first_row, std::int32_t rows);

  [[nodiscard]] bool Holds(std::int32_t row) const { return row >= first_row_ && row < end(); }
  [[nodiscard]] std::int32_t end() const {
    return first_row_ + static_cast<std::int32_t>(cells_.getLength());
  }

  // The value of the cell in that row; nothing when it has to be asked.
  [[nodiscard]] std::optional<CellValue> Value(std::int32_t row) const;
  // What the cell shows; nothing when it has to be asked.
  [[nodiscard]] std::optional<Text> CellText(std::int32_t row) const;

 private:
  [[nodiscard]] const css::uno::Any& Cell(std::int32_t row) const;

  CellReader* reader_;
  std::int32_t first_row_;
  css::uno::Sequence<css::uno::Sequence<css::uno::Any>> cells_;
  std::optional<NumberKind> kind_;  // of all the cells alike
  sal_Int32 format_key_ = 0;        // with kind_
  bool formulas_ = false;           // some cells have one
  bool plain_numbers_ = false;      // a number shows what format_key_ makes of it
};

}  // namespace quorvel
