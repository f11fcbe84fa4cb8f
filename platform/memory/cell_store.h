#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <vector>

#include "platform/cell_value.h"
#include "platform/text.h"

namespace quorvel {

// The cells of one sheet, dense by column. Texts lie in one arena that only grows: a sheet is filled once and
// read often. Rows and columns count from 0 here; a cell that was never set is empty.
class CellStore {
 public:
  CellStore() = default;
  CellStore(const CellStore&) = delete;
  CellStore& operator=(const CellStore&) = delete;

  // `display` is what the sheet shows of `value`.
  void Set(std::size_t row, std::size_t column, const CellValue& value, TextView display);
  // A text, displayed as it is.
  void SetText(std::size_t row, std::size_t column, TextView text);

  [[nodiscard]] CellValue Value(std::size_t row, std::size_t column) const;
  // Valid as long as the store.
  [[nodiscard]] TextView Display(std::size_t row, std::size_t column) const;

  // One past the last cell that is not empty; 0 on an empty sheet.
  [[nodiscard]] std::size_t rows() const;
  [[nodiscard]] std::size_t columns() const;

 private:
  enum class Kind : std::uint8_t { kEmpty, kNumber, kText, kBoolean, kDate, kError };

  struct Cell {
    const char16_t* display = nullptr;  // in arena_
    double number = 0;                  // of every kind but a text
    std::uint32_t display_size = 0;
    Kind kind = Kind::kEmpty;
  };

  Cell& At(std::size_t row, std::size_t column);
  [[nodiscard]] const Cell* Find(std::size_t row, std::size_t column) const;
  void Keep(Cell& cell, TextView display);

  std::pmr::monotonic_buffer_resource arena_;
  std::vector<std::vector<Cell>> columns_;
};

}  // namespace quorvel
