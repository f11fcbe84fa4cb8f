#include "platform/memory/memory_workbook.h"

#include <algorithm>

#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr std::size_t kLongestSheetName = 31;
constexpr TextView kNotInSheetNames = u":\\/?*[]";

struct Position {
  std::size_t row;
  std::size_t column;
};

RuntimeError Refused() {
  return {1004, u"Application-defined or object-defined error"};
}

Position At(const CellAddress& address) {
  const std::int32_t column = ColumnNumber(address.column);
  if (address.row < 1 || address.row > MemorySheet::kRowLimit) throw Refused();
  if (column < 1 || column > MemorySheet::kColumnLimit) throw Refused();
  return {static_cast<std::size_t>(address.row - 1), static_cast<std::size_t>(column - 1)};
}

struct ErrorText {
  std::int32_t number;
  TextView text;
};

constexpr ErrorText kErrorTexts[] = {{2000, u"#NULL!"}, {2007, u"#DIV/0!"}, {2015, u"#VALUE!"},
                                     {2023, u"#REF!"},  {2029, u"#NAME?"},  {2036, u"#NUM!"},
                                     {2042, u"#N/A"}};

Text GeneralFormat(const CellValue& value) {
  if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? u"TRUE" : u"FALSE";
  if (const auto* error = std::get_if<CellError>(&value)) {
    const auto* const found =
        std::find_if(std::begin(kErrorTexts), std::end(kErrorTexts),
                     [&](const ErrorText& known) { return known.number == error->number; });
    return found == std::end(kErrorTexts) ? u"#ERR " + NumberToText(error->number) : Text(found->text);
  }
  return ToText(value);
}

// What the workbook hands out: the sheets stay the workbook's.
class SheetHandle : public Sheet {
 public:
  explicit SheetHandle(MemorySheet& sheet) : sheet_(sheet) {}

  std::int32_t UsedRows() override { return sheet_.UsedRows(); }
  std::int32_t UsedColumns() override { return sheet_.UsedColumns(); }
  std::int32_t RowLimit() override { return sheet_.RowLimit(); }
  CellValue Value(const CellAddress& address) override { return sheet_.Value(address); }
  Text CellText(const CellAddress& address) override { return sheet_.CellText(address); }
  void SelectColumn(std::int32_t column) override { sheet_.SelectColumn(column); }
  void Write(const CellAddress& address, TextView text) override { sheet_.Write(address, text); }
  void BoldCell(const CellAddress& address) override { sheet_.BoldCell(address); }

 private:
  MemorySheet& sheet_;
};

class WorkbookHandle : public Workbook {
 public:
  explicit WorkbookHandle(MemoryWorkbook& workbook) : workbook_(workbook) {}

  std::unique_ptr<Sheet> ActiveSheet() override { return workbook_.ActiveSheet(); }
  std::vector<Text> SheetNames() override { return workbook_.SheetNames(); }
  std::unique_ptr<Sheet> AddSheet(TextView name) override { return workbook_.AddSheet(name); }

 private:
  MemoryWorkbook& workbook_;
};

}  // namespace

void MemorySheet::Set(const CellAddress& address, const CellValue& value) {
  if (const auto* text = std::get_if<Text>(&value)) {
    Write(address, *text);
  } else {
    Set(address, value, GeneralFormat(value));
  }
}

void MemorySheet::Set(const CellAddress& address, const CellValue& value, TextView display) {
  const Position at = At(address);
  cells_.Set(at.row, at.column, value, display);
}

bool MemorySheet::Bold(const CellAddress& address) const {
  const Position at = At(address);
  return bold_.contains({at.row, at.column});
}

std::int32_t MemorySheet::UsedRows() {
  return std::max(1, static_cast<std::int32_t>(cells_.rows()));
}

std::int32_t MemorySheet::UsedColumns() {
  return std::max(1, static_cast<std::int32_t>(cells_.columns()));
}

CellValue MemorySheet::Value(const CellAddress& address) {
  const Position at = At(address);
  return cells_.Value(at.row, at.column);
}

Text MemorySheet::CellText(const CellAddress& address) {
  const Position at = At(address);
  return Text(cells_.Display(at.row, at.column));
}

void MemorySheet::SelectColumn(std::int32_t column) {
  if (column < 1 || column > kColumnLimit) throw Refused();
  selected_column_ = column;
}

void MemorySheet::Write(const CellAddress& address, TextView text) {
  const Position at = At(address);
  if (text.empty()) {
    cells_.Set(at.row, at.column, {}, {});
  } else {
    cells_.SetText(at.row, at.column, text);
  }
}

void MemorySheet::BoldCell(const CellAddress& address) {
  const Position at = At(address);
  bold_.insert({at.row, at.column});
}

MemoryWorkbook::MemoryWorkbook(TextView first_sheet) {
  sheets_.push_back(std::make_unique<MemorySheet>(first_sheet));
}

MemorySheet& MemoryWorkbook::active() {
  return *sheets_[active_];
}

MemorySheet* MemoryWorkbook::Find(TextView name) {
  const Text wanted = UpperCase(name);
  const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                  [&](const auto& sheet) { return UpperCase(sheet->name()) == wanted; });
  return found == sheets_.end() ? nullptr : found->get();
}

std::unique_ptr<Sheet> MemoryWorkbook::ActiveSheet() {
  return std::make_unique<SheetHandle>(active());
}

std::vector<Text> MemoryWorkbook::SheetNames() {
  std::vector<Text> names;
  for (const auto& sheet : sheets_) names.push_back(sheet->name());
  return names;
}

std::unique_ptr<Sheet> MemoryWorkbook::AddSheet(TextView name) {
  const bool well_formed = !name.empty() && name.size() <= kLongestSheetName &&
                           name.find_first_of(kNotInSheetNames) == TextView::npos;
  if (!well_formed || Find(name) != nullptr) throw Refused();
  sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(active_), std::make_unique<MemorySheet>(name));
  return ActiveSheet();
}

MemoryWorkbook& MemoryApplication::OpenWorkbook(TextView first_sheet) {
  return workbook_.emplace(first_sheet);
}

std::unique_ptr<Workbook> MemoryApplication::ActiveWorkbook() {
  if (!workbook_) return nullptr;
  return std::make_unique<WorkbookHandle>(*workbook_);
}

}  // namespace quorvel
