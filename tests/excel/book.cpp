#include "tests/excel/book.h"

#include <algorithm>

#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/workbook.h"

namespace quorvel::tests {

namespace {

constexpr std::int32_t kRowLimit = 1048576;
constexpr std::int32_t kColumnLimit = 16384;
constexpr std::size_t kLongestName = 31;

struct Area {
  std::int32_t row = 1;
  std::int32_t column = 1;
  std::int32_t rows = 1;
  std::int32_t columns = 1;
};

Area UsedArea(const SheetData& sheet) {
  if (sheet.cells.empty()) return {};
  Area area{kRowLimit, kColumnLimit, 0, 0};
  std::int32_t last_row = 1;
  std::int32_t last_column = 1;
  for (const auto& [place, cell] : sheet.cells) {
    area.row = std::min(area.row, place.first);
    area.column = std::min(area.column, place.second);
    last_row = std::max(last_row, place.first);
    last_column = std::max(last_column, place.second);
  }
  area.rows = last_row - area.row + 1;
  area.columns = last_column - area.column + 1;
  return area;
}

// A single cell in A1 notation.
Area ParseAddress(const Text& address) {
  const std::size_t digits = address.find_first_of(u"0123456789");
  const std::int32_t column = ColumnNumber(TextView(address).substr(0, digits));
  const double row = digits == Text::npos ? 0 : Val(TextView(address).substr(digits));
  if (column < 1 || column > kColumnLimit || row < 1 || row > kRowLimit) {
    Refuse(u"Method 'Range' of object '_Worksheet' failed");
  }
  return {static_cast<std::int32_t>(row), column, 1, 1};
}

class FontObject : public Automation {
 public:
  explicit FontObject(Cell& cell) {
    AddProperty(
        L"Bold", [&cell](const Arguments&) { return Variant(cell.bold); },
        [&cell](const Variant& bold) { cell.bold = bold.ToBool(); });
  }
};

// Rows or columns of a range.
class LinesObject : public Automation {
 public:
  LinesObject(std::int32_t count, std::function<void()> select) {
    AddProperty(L"Count", [count](const Arguments&) { return Variant(count); });
    AddFunction(L"Select", [select = std::move(select)](const Arguments&) {
      select();
      return Variant(true);
    });
  }
};

class RangeObject : public Automation {
 public:
  RangeObject(std::shared_ptr<SheetData> sheet, const Area& area) : sheet_(std::move(sheet)) {
    const auto number = [](std::int32_t value) {
      return [value](const Arguments&) { return Variant(value); };
    };
    AddProperty(L"Row", number(area.row));
    AddProperty(L"Column", number(area.column));
    AddProperty(L"Rows", [area](const Arguments&) { return NewObject<LinesObject>(area.rows, [] {}); });
    AddProperty(L"Columns", [area](const Arguments&) { return NewObject<LinesObject>(area.columns, [] {}); });
    if (area.rows * area.columns == 1) AddCellMembers(area.row, area.column);
  }

 private:
  void AddCellMembers(std::int32_t row, std::int32_t column) {
    const auto cell = [this, row, column]() -> Cell& { return sheet_->At(row, column); };
    AddProperty(
        L"Value",
        [this, row, column](const Arguments&) {
          const auto found = sheet_->cells.find({row, column});
          return found == sheet_->cells.end() ? Variant() : found->second.value;
        },
        [this, cell](const Variant& value) { Set(cell(), value); });
    AddProperty(L"Text",
                [this, row, column](const Arguments&) { return Variant(sheet_->TextAt(row, column)); });
    AddProperty(
        L"NumberFormat", [cell](const Arguments&) { return Variant(cell().format); },
        [this, cell](const Variant& format) {
          CheckWritable();
          cell().format = format.ToText();
        });
    AddProperty(L"Font", [cell](const Arguments&) { return NewObject<FontObject>(cell()); });
  }

  void CheckWritable() const {
    if (sheet_->is_protected) Refuse(u"The cell or chart you're trying to change is on a protected sheet.");
  }

  // As typing does: text that reads as a number becomes one, except in a cell of text format; a leading
  // apostrophe marks text and is not part of it; an empty text empties the cell.
  void Set(Cell& cell, const Variant& value) {
    CheckWritable();
    cell.value = value;
    if (value.get().vt != VT_BSTR) return;
    const Text text = value.ToText();
    if (text.empty()) cell.value = Variant();
    if (text.starts_with(u'\'')) {
      cell.value = Variant(TextView(text).substr(1));
    } else if (cell.format != u"@" && IsNumeric(TextView(text))) {
      cell.value = Variant(ToDouble(text));
    }
  }

  std::shared_ptr<SheetData> sheet_;
};

class SheetObject : public Automation {
 public:
  SheetObject(std::shared_ptr<BookData> book, std::shared_ptr<SheetData> sheet)
      : book_(std::move(book)), sheet_(std::move(sheet)) {
    AddProperty(
        L"Name", [this](const Arguments&) { return Variant(sheet_->name); },
        [this](const Variant& name) { Rename(name.ToText()); });
    AddFunction(L"Activate", [this](const Arguments&) {
      book_->active = sheet_;
      return Variant();
    });
    AddFunction(L"Delete", [this](const Arguments&) {
      book_->asked_to_delete = book_->asked_to_delete || book_->display_alerts;
      std::erase(book_->sheets, sheet_);
      if (book_->active == sheet_) book_->active = book_->sheets.front();
      return Variant(true);
    });
    if (!sheet_->chart) AddCellMembers();
  }

 private:
  void AddCellMembers() {
    AddProperty(L"UsedRange",
                [this](const Arguments&) { return NewObject<RangeObject>(sheet_, UsedArea(*sheet_)); });
    AddProperty(L"Range", [this](const Arguments& arguments) {
      return NewObject<RangeObject>(sheet_, ParseAddress(arguments[0].ToText()));
    });
    AddProperty(L"Rows", [](const Arguments&) { return NewObject<LinesObject>(kRowLimit, [] {}); });
    AddProperty(L"Columns", [this](const Arguments& arguments) {
      const std::int32_t column = arguments.Has(0) ? arguments[0].ToLong() : 0;
      return NewObject<LinesObject>(kColumnLimit,
                                    [sheet = sheet_, column] { sheet->selected_column = column; });
    });
  }

  void Rename(const Text& name) {
    const bool taken = std::any_of(book_->sheets.begin(), book_->sheets.end(), [&](const auto& other) {
      return other != sheet_ && UpperCase(other->name) == UpperCase(name);
    });
    if (taken || name.empty() || name.size() > kLongestName ||
        name.find_first_of(u":\\/?*[]") != Text::npos) {
      Refuse(u"That name is already taken. Try a different one.");
    }
    sheet_->name = name;
  }

  std::shared_ptr<BookData> book_;
  std::shared_ptr<SheetData> sheet_;
};

class SheetsObject : public Automation {
 public:
  explicit SheetsObject(std::shared_ptr<BookData> book) : book_(std::move(book)) {
    AddProperty(L"Count", [this](const Arguments&) {
      return Variant(static_cast<std::int32_t>(book_->sheets.size()));
    });
    AddProperty(L"Item", [this](const Arguments& arguments) {
      const auto index = static_cast<std::size_t>(arguments[0].ToLong());
      if (index < 1 || index > book_->sheets.size()) throw SubscriptOutOfRange();
      return NewObject<SheetObject>(book_, book_->sheets[index - 1]);
    });
    AddFunction(L"Add", [this](const Arguments&) {  // before the active sheet, which it becomes
      auto sheet = std::make_shared<SheetData>();
      sheet->name = u"Sheet" + NumberToText(static_cast<std::int32_t>(book_->sheets.size() + 1));
      const auto place = std::find(book_->sheets.begin(), book_->sheets.end(), book_->active);
      book_->sheets.insert(place, sheet);
      book_->active = sheet;
      return NewObject<SheetObject>(book_, sheet);
    });
  }

 private:
  std::shared_ptr<BookData> book_;
};

}  // namespace

Text SheetData::TextAt(std::int32_t row, std::int32_t column) {
  const auto found = cells.find({row, column});
  if (found == cells.end()) return {};
  return found->second.display ? *found->second.display : ToText(ToCellValue(found->second.value.get()));
}

std::shared_ptr<SheetData> BookData::Add(TextView name) {
  auto sheet = std::make_shared<SheetData>();
  sheet->name = name;
  sheets.push_back(sheet);
  active = sheet;
  return sheet;
}

BookObject::BookObject(const std::shared_ptr<BookData>& book) {
  AddProperty(L"ActiveSheet", [book](const Arguments&) {
    return book->active ? NewObject<SheetObject>(book, book->active) : Nothing();
  });
  AddProperty(L"Worksheets", [book](const Arguments&) { return NewObject<SheetsObject>(book); });
}

}  // namespace quorvel::tests
