#pragma once

#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "hosts/excel/variant.h"
#include "tests/excel/automation.h"

namespace quorvel::tests {

// What the stand-in's workbook holds. Rows and columns count from 1.
struct Cell {
  Variant value;
  std::optional<Text> display;  // where it is not the value's own text
  Text format = u"General";
  bool bold = false;
};

struct SheetData {
  Text name;
  bool chart = false;  // a sheet without cells
  bool is_protected = false;
  std::map<std::pair<std::int32_t, std::int32_t>, Cell> cells;
  std::int32_t selected_column = 0;

  [[nodiscard]] Cell& At(std::int32_t row, std::int32_t column) { return cells[{row, column}]; }
  [[nodiscard]] Text TextAt(std::int32_t row, std::int32_t column);
};

struct BookData {
  std::vector<std::shared_ptr<SheetData>> sheets;
  std::shared_ptr<SheetData> active;
  bool display_alerts = true;  // the application's
  bool asked_to_delete =
      false;  // the user was, as always before a sheet is deleted while alerts are displayed

  std::shared_ptr<SheetData> Add(TextView name);
};

// The workbook's own object, with the members of the application's object model that deal with cells.
class BookObject : public Automation {
 public:
  explicit BookObject(const std::shared_ptr<BookData>& book);
};

}  // namespace quorvel::tests
