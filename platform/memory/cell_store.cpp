#include "platform/memory/cell_store.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>

namespace quorvel {

namespace {

double NumberOf(const CellValue& value) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? 1 : 0;
  if (const auto* date = std::get_if<Date>(&value)) return date->serial;
  if (const auto* error = std::get_if<CellError>(&value)) return error->number;
  return 0;
}

}  // namespace

CellStore::Cell& CellStore::At(std::size_t row, std::size_t column) {
  if (columns_.size() <= column) columns_.resize(column + 1);
  std::vector<Cell>& cells = columns_[column];
  if (cells.size() <= row) cells.resize(row + 1);
  return cells[row];
}

const CellStore::Cell* CellStore::Find(std::size_t row, std::size_t column) const {
  if (column >= columns_.size() || row >= columns_[column].size()) return nullptr;
  return &columns_[column][row];
}

void CellStore::Keep(Cell& cell, TextView display) {
  assert(display.size() <= std::numeric_limits<std::uint32_t>::max());
  const std::size_t bytes = display.size() * sizeof(char16_t);
  auto* units = static_cast<char16_t*>(arena_.allocate(bytes, alignof(char16_t)));
  std::copy(display.begin(), display.end(), units);
  cell.display = units;
  cell.display_size = static_cast<std::uint32_t>(display.size());
}

void CellStore::Set(std::size_t row, std::size_t column, const CellValue& value, TextView display) {
  static constexpr std::array kKinds = {Kind::kEmpty,   Kind::kNumber, Kind::kText,
                                        Kind::kBoolean, Kind::kDate,   Kind::kError};
  static_assert(kKinds.size() == std::variant_size_v<CellValue>);
  Cell& cell = At(row, column);
  cell = {.number = NumberOf(value), .kind = kKinds[value.index()]};
  if (cell.kind != Kind::kEmpty) Keep(cell, display);
}

void CellStore::SetText(std::size_t row, std::size_t column, TextView text) {
  Cell& cell = At(row, column);
  cell = {.kind = Kind::kText};
  Keep(cell, text);
}

CellValue CellStore::Value(std::size_t row, std::size_t column) const {
  const Cell* const cell = Find(row, column);
  if (cell == nullptr) return {};
  switch (cell->kind) {
    case Kind::kEmpty:
      return {};
    case Kind::kNumber:
      return cell->number;
    case Kind::kText:
      return Text(cell->display, cell->display_size);
    case Kind::kBoolean:
      return cell->number != 0;
    case Kind::kDate:
      return Date{cell->number};
    case Kind::kError:
      return CellError{static_cast<std::int32_t>(cell->number)};
  }
  return {};
}

TextView CellStore::Display(std::size_t row, std::size_t column) const {
  const Cell* const cell = Find(row, column);
  return cell == nullptr ? TextView() : TextView(cell->display, cell->display_size);
}

std::size_t CellStore::rows() const {
  std::size_t last = 0;
  for (const std::vector<Cell>& cells : columns_) {
    std::size_t size = cells.size();
    while (size > last && cells[size - 1].kind == Kind::kEmpty) --size;
    last = std::max(last, size);
  }
  return last;
}

std::size_t CellStore::columns() const {
  const auto filled = [](const std::vector<Cell>& cells) {
    return std::any_of(cells.begin(), cells.end(),
                       [](const Cell& cell) { return cell.kind != Kind::kEmpty; });
  };
  const auto last = std::find_if(columns_.rbegin(), columns_.rend(), filled);
  return static_cast<std::size_t>(columns_.rend() - last);
}

}  // namespace quorvel
