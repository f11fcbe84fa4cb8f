#include "send/placeholders.h"

#include <array>

#include "send/hex_text.h"

namespace quorvel {

namespace {

constexpr char16_t kMark = u'#';
constexpr char16_t kDelete = 127;  // the row mark, as a character

bool IsColumnLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

// The only non-blank unit of `text` when it is a column letter; otherwise 0.
char16_t OnlyLetter(TextView text) {
  char16_t only = 0;
  for (const char16_t unit : text) {
    if (unit == u' ') continue;
    if (only != 0 || !IsColumnLetter(unit)) return 0;
    only = unit;
  }
  return only;
}

}  // namespace

std::vector<char16_t> ScanPlaceholders(TextView message) {
  std::vector<char16_t> columns;
  std::size_t opening = message.find(kMark);
  while (opening != TextView::npos) {
    const std::size_t closing = message.find(kMark, opening + 1);
    if (closing == TextView::npos) break;
    const char16_t column = OnlyLetter(message.substr(opening + 1, closing - opening - 1));
    if (column != 0) columns.push_back(column);
    opening = column != 0 ? message.find(kMark, closing + 1) : closing;
  }
  return columns;
}

Text Personalise(TextView message, const std::vector<CellText>& cells) {
  Text personal(message);
  for (const CellText& cell : cells) {
    const std::array<char16_t, 3> placeholder = {kMark, cell.column, kMark};
    personal = Replace(personal, TextView(placeholder.data(), placeholder.size()), cell.text);
  }
  return personal;
}

Text RowCellData(const std::vector<CellText>& cells, bool hex) {
  Text row;
  Text value;
  for (const CellText& cell : cells) {
    if (!row.empty()) row.push_back(kSegmentMark);
    row.push_back(cell.column);
    row.push_back(kColumnMark);
    value = cell.text;
    std::erase_if(value, [](char16_t unit) { return unit == kColumnMark || unit == kDelete; });
    row += hex ? conStringToHex(value) : value;
  }
  return row;
}

}  // namespace quorvel
