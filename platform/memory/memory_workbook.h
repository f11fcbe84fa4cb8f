#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/memory/cell_store.h"
#include "platform/memory/memory_command_bars.h"
#include "platform/workbook.h"

namespace quorvel {

// A sheet held in memory, of Excel's size.
class MemorySheet : public Sheet {
 public:
  static constexpr std::int32_t kRowLimit = 1'048'576;
  static constexpr std::int32_t kColumnLimit = 16'384;

  explicit MemorySheet(TextView name) : name_(name) {}

  [[nodiscard]] const Text& name() const { return name_; }

  // Fills a cell as a user would: a text is displayed as it is, every other value as the sheet's general
  // format does, unless `display` says otherwise. Throws RuntimeError 1004 for a cell outside the sheet.
  void Set(const CellAddress& address, const CellValue& value);
  void Set(const CellAddress& address, const CellValue& value, TextView display);

  // The column that was selected last; 0 before any was.
  [[nodiscard]] std::int32_t selected_column() const { return selected_column_; }
  [[nodiscard]] bool Bold(const CellAddress& address) const;

  [[nodiscard]] std::int32_t UsedRows() override;
  [[nodiscard]] std::int32_t UsedColumns() override;
  [[nodiscard]] std::int32_t RowLimit() override { return kRowLimit; }
  [[nodiscard]] CellValue Value(const CellAddress& address) override;
  [[nodiscard]] Text CellText(const CellAddress& address) override;
  void SelectColumn(std::int32_t column) override;
  void Write(const CellAddress& address, TextView text) override;
  void BoldCell(const CellAddress& address) override;

 private:
  Text name_;
  CellStore cells_;
  std::int32_t selected_column_ = 0;
  std::set<std::pair<std::size_t, std::size_t>> bold_;
};

// A workbook of one sheet at first, which is the active one. Its sheets live as long as the workbook.
class MemoryWorkbook : public Workbook {
 public:
  explicit MemoryWorkbook(TextView first_sheet);

  [[nodiscard]] MemorySheet& active();
  // Null when there is no sheet of that name, case ignored.
  [[nodiscard]] MemorySheet* Find(TextView name);

  [[nodiscard]] std::unique_ptr<Sheet> ActiveSheet() override;
  [[nodiscard]] std::vector<Text> SheetNames() override;
  // In front of the active sheet. Throws RuntimeError 1004 for a name that is empty, longer than 31 units,
  // taken (case ignored), or holds one of : \ / ? * [ ].
  std::unique_ptr<Sheet> AddSheet(TextView name) override;

 private:
  std::vector<std::unique_ptr<MemorySheet>> sheets_;
  std::size_t active_ = 0;
};

// A spreadsheet application with at most one workbook open.
class MemoryApplication : public Application {
 public:
  // Open the application with these popups on its menu bar.
  explicit MemoryApplication(const std::vector<Text>& menus = {}) : bars_(menus) {}

  // In place of the one that was open.
  MemoryWorkbook& OpenWorkbook(TextView first_sheet = u"Sheet1");
  void CloseWorkbook() { workbook_.reset(); }
  // Null when none is open.
  [[nodiscard]] MemoryWorkbook* workbook() { return workbook_ ? &*workbook_ : nullptr; }
  [[nodiscard]] MemoryCommandBars& bars() { return bars_; }

  [[nodiscard]] std::unique_ptr<Workbook> ActiveWorkbook() override;
  [[nodiscard]] CommandBars& Bars() override { return bars_; }

 private:
  std::optional<MemoryWorkbook> workbook_;
  MemoryCommandBars bars_;
};

}  // namespace quorvel
