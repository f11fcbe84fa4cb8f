#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "hosts/calc/calc_workbook.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

// A walk down a column is known by its second block; the first one is small for whoever wants a single cell.
constexpr std::int32_t kFirstBlockRows = 16;
constexpr std::int32_t kBlockRows = 1024;

}  // namespace

CalcSheet::CalcSheet(const Context& context, const Reference<css::frame::XController>& controller,
                     const Reference<css::sheet::XSpreadsheet>& sheet)
    : controller_(controller), document_(controller->getModel()), sheet_(sheet), reader_(context, document_) {
  const Reference<css::table::XColumnRowRange> all(sheet_, UNO_QUERY_THROW);
  row_limit_ = all->getRows()->getCount();
  column_limit_ = all->getColumns()->getCount();
}

CalcSheet::~CalcSheet() {
  if (repaint_locked_) AtEntry("repaint", [this] { document_->unlockControllers(); });
}

css::table::CellRangeAddress CalcSheet::UsedRange() const {
  const Reference<css::sheet::XUsedAreaCursor> cursor(sheet_->createCursor(), UNO_QUERY_THROW);
  cursor->gotoStartOfUsedArea(false);
  cursor->gotoEndOfUsedArea(true);
  return Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)->getRangeAddress();
}

std::int32_t CalcSheet::UsedRows() {
  return AskingCalc([this] { return UsedRange().EndRow + 1; });
}

std::int32_t CalcSheet::UsedColumns() {
  return AskingCalc([this] { return UsedRange().EndColumn + 1; });
}

std::int32_t CalcSheet::RowLimit() {
  return row_limit_;
}

CalcSheet::Position CalcSheet::Find(const CellAddress& address) const {
  const std::int32_t column = ColumnNumber(address.column);
  if (column < 1 || column > column_limit_ || address.row < 1 || address.row > row_limit_) {
    throw RuntimeError(kApplicationError, u"Method 'Range' of object '_Worksheet' failed");
  }
  return {column - 1, address.row - 1};
}

Reference<css::table::XCell> CalcSheet::Cell(const Position& position) const {
  return sheet_->getCellByPosition(position.column, position.row);
}

const ColumnBlock& CalcSheet::Block(const Position& position) {
  if (!watch_) watch_.emplace(sheet_, UsedRange());
  if (watch_->TakeChange()) blocks_.clear();
  const auto found = blocks_.find(position.column);
  const bool known = found != blocks_.end();
  if (known && found->second.Holds(position.row)) return found->second;
  const bool walking = known && found->second.end() == position.row;
  const std::int32_t rows = std::min(walking ? kBlockRows : kFirstBlockRows, row_limit_ - position.row);
  ColumnBlock block(sheet_, reader_, position.column, position.row, rows);
  return blocks_.insert_or_assign(position.column, std::move(block)).first->second;
}

CellValue CalcSheet::Value(const CellAddress& address) {
  const Position position = Find(address);
  return AskingCalc([&]() -> CellValue {
    if (auto value = Block(position).Value(position.row)) return *std::move(value);
    return reader_.Value(Cell(position));
  });
}

Text CalcSheet::CellText(const CellAddress& address) {
  const Position position = Find(address);
  return AskingCalc([&] {
    if (auto text = Block(position).CellText(position.row)) return *std::move(text);
    return FromUno(Reference<css::text::XTextRange>(Cell(position), UNO_QUERY_THROW)->getString());
  });
}

void CalcSheet::SelectColumn(std::int32_t column) {
  if (column < 1 || column > column_limit_) {
    throw RuntimeError(kApplicationError, u"Application-defined or object-defined error");
  }
  AskingCalc([&] {
    const Reference<css::view::XSelectionSupplier> selection(controller_, UNO_QUERY_THROW);
    const auto range = sheet_->getCellRangeByPosition(column - 1, 0, column - 1, row_limit_ - 1);
    selection->select(css::uno::Any(range));
  });
}

Reference<css::table::XCell> CalcSheet::Writable(const CellAddress& address) {
  const Position position = Find(address);
  return AskingCalc([&] {
    const bool read_only = Reference<css::frame::XStorable>(document_, UNO_QUERY_THROW)->isReadonly();
    if (read_only || Reference<css::util::XProtectable>(sheet_, UNO_QUERY_THROW)->isProtected()) {
      throw RuntimeError(kApplicationError, u"The cell that you are trying to change is protected.");
    }
    if (!std::exchange(repaint_locked_, true)) document_->lockControllers();
    blocks_.erase(position.column);
    return Cell(position);
  });
}

void CalcSheet::Write(const CellAddress& address, TextView text) {
  const auto cell = Writable(address);
  AskingCalc([&] { Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->setString(ToUno(text)); });
}

void CalcSheet::BoldCell(const CellAddress& address) {
  const auto cell = Writable(address);
  AskingCalc([&] { SetProperty(cell, "CharWeight", css::awt::FontWeight::BOLD); });
}

}  // namespace quorvel
