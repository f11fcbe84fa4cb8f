#include "hosts/calc/column_block.h"

#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>

#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

// The format's key itself does not tell: a range of several formats gives the standard one.
bool OfOneFormat(const Reference<css::table::XCellRange>& range) {
  const Reference<css::beans::XPropertyState> states(range, UNO_QUERY_THROW);
  return states->getPropertyState("NumberFormat") != css::beans::PropertyState_AMBIGUOUS_VALUE;
}

// Number formats of one key may still be of several languages; cells that are formatted alike in everything
// are not.
bool FormattedAlike(const Reference<css::table::XCellRange>& range) {
  const Reference<css::sheet::XCellFormatRangesSupplier> formats(range, UNO_QUERY_THROW);
  return formats->getCellFormatRanges()->getCount() == 1;
}

}  // namespace

ColumnBlock::ColumnBlock(const Reference<css::sheet::XSpreadsheet>& sheet, CellReader& reader,
                         std::int32_t column, std::int32_t first_row, std::int32_t rows)
    : reader_(&reader), first_row_(first_row) {
  const Reference<css::table::XCellRange> range =
      sheet->getCellRangeByPosition(column, first_row, column, first_row + rows - 1);
  cells_ = Reference<css::sheet::XCellRangeData>(range, UNO_QUERY_THROW)->getDataArray();
  if (OfOneFormat(range)) {
    GetProperty(range, "NumberFormat") >>= format_key_;
    kind_ = reader.KindOf(format_key_);
  }
  const Reference<css::sheet::XCellRangesQuery> query(range, UNO_QUERY_THROW);
  formulas_ = query->queryContentCells(css::sheet::CellFlags::FORMULA)->getCount() > 0;
  plain_numbers_ = kind_ && !formulas_ && FormattedAlike(range);
}

const css::uno::Any& ColumnBlock::Cell(std::int32_t row) const {
  return cells_[row - first_row_][0];
}

std::optional<CellValue> ColumnBlock::Value(std::int32_t row) const {
  const css::uno::Any& cell = Cell(row);
  if (const auto* const text = static_cast<const rtl::OUString*>(
          cell.getValueTypeClass() == css::uno::TypeClass_STRING ? cell.getValue() : nullptr)) {
    // An empty text may be an empty cell or a formula's result.
    if (text->isEmpty()) return std::nullopt;
    return FromUno(*text);
  }
  double number = 0;
  if (formulas_ || !kind_ || !(cell >>= number)) return std::nullopt;
  return reader_->Number(number, kind_->shape);
}

std::optional<Text> ColumnBlock::CellText(std::int32_t row) const {
  const css::uno::Any& cell = Cell(row);
  double number = 0;
  if (plain_numbers_ && (cell >>= number)) return reader_->Shown(number, format_key_);
  rtl::OUString text;
  if (!kind_ || !kind_->plain_text || !(cell >>= text)) return std::nullopt;
  return FromUno(text);
}

}  // namespace quorvel
