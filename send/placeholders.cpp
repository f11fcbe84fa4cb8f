#include "send/placeholders.h"

#include <array>

#include "send/hex_text.h"

namespace quorvel {

namespace {

constexpr char16_t kMark = u'#';
constexpr TextView kDropped = u"\u0001\u007f";

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

std::vector<Text> CellSegments(const std::vector<CellText>& cells, bool hex) {
  std::vector<Text> segments;
  segments.reserve(cells.size());
  for (const CellText& cell : cells) {
    Text segment;
    if (!segments.empty()) segment.push_back(kSegmentMark);
    segment.push_back(cell.column);
    segment.push_back(kColumnMark);
    const Text value = Remove(cell.text, kDropped);
    segment += hex ? conStringToHex(value) : value;
    segments.push_back(std::move(segment));
  }
  return segments;
}

}  // namespace quorvel
