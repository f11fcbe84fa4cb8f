#include "sandbox/merge.h"

#include <algorithm>

#include "sandbox/form.h"

namespace quorvel::sandbox {
namespace {

constexpr char kAfterColumn = 1;
constexpr char kBetweenSegments = 2;

bool StartsSegment(std::string_view bytes) {
  const auto is_letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return bytes.size() >= 2 && is_letter(bytes[0]) && bytes[1] == kAfterColumn;
}

// Where the value at the start of `bytes` ends.
std::size_t ValueEnd(std::string_view bytes) {
  std::size_t end = bytes.find(kBetweenSegments);
  while (end != std::string_view::npos && !StartsSegment(bytes.substr(end + 1))) {
    end = bytes.find(kBetweenSegments, end + 1);
  }
  return std::min(end, bytes.size());
}

// The one non-blank character between two "#", or 0.
char16_t ColumnOf(TextView enclosed) {
  const std::size_t at = enclosed.find_first_not_of(u' ');
  if (at == TextView::npos || enclosed.find_last_not_of(u' ') != at) return 0;
  return enclosed[at];
}

}  // namespace

std::optional<RowValues> ReadRow(std::string_view encoded_row, ValueReader read) {
  RowValues values;
  const std::string decoded = FormDecode(encoded_row);
  std::string_view rest = decoded;
  while (!rest.empty()) {
    if (!StartsSegment(rest)) return std::nullopt;
    const auto column = static_cast<char16_t>(rest.front());
    rest.remove_prefix(2);
    const std::size_t end = ValueEnd(rest);
    auto value = read(rest.substr(0, end));
    if (!value) return std::nullopt;
    values.emplace_back(column, std::move(*value));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return values;
}

MergeTemplate::MergeTemplate(TextView text) {
  std::size_t plain = 0;
  std::size_t open = text.find(u'#');
  while (open != TextView::npos) {
    const std::size_t close = text.find(u'#', open + 1);
    if (close == TextView::npos) break;
    const char16_t column = ColumnOf(text.substr(open + 1, close - open - 1));
    if (column == 0) {
      open = close;
      continue;
    }
    if (open > plain) pieces_.push_back({Text(text.substr(plain, open - plain)), 0});
    pieces_.push_back({Text(text.substr(open, close + 1 - open)), column});
    plain = close + 1;
    open = text.find(u'#', plain);
  }
  if (plain < text.size()) pieces_.push_back({Text(text.substr(plain)), 0});
}

bool MergeTemplate::HasPlaceholders() const {
  return std::ranges::any_of(pieces_, [](const Piece& piece) { return piece.column != 0; });
}

Text MergeTemplate::Merge(const RowValues& row) const {
  Text merged;
  for (const Piece& piece : pieces_) {
    const auto value = std::ranges::find(row, piece.column, &RowValues::value_type::first);
    merged += value == row.end() ? piece.written : value->second;
  }
  return merged;
}

std::int64_t SmsCount(std::size_t units, bool unicode) {
  const std::size_t single = unicode ? 70 : 160;
  const std::size_t part = unicode ? 67 : 153;
  return units <= single ? 1 : static_cast<std::int64_t>((units + part - 1) / part);
}

}  // namespace quorvel::sandbox
