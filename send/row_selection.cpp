#include "send/row_selection.h"

#include <algorithm>

#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

RowRange ParsePiece(TextView piece) {
  const std::size_t hyphen = piece.find(u'-');
  if (hyphen == TextView::npos) {
    const std::int32_t row = ToLong(piece);
    return {row, row};
  }
  return {ToLong(piece.substr(0, hyphen)), ToLong(piece.substr(hyphen + 1))};
}

std::vector<std::int32_t> Expand(const std::vector<RowRange>& ranges, std::int32_t used_rows) {
  std::vector<std::int32_t> rows;
  for (const RowRange& range : ranges) {
    const std::int32_t last = std::min(range.last, used_rows);
    for (std::int32_t row = range.first; row <= last; ++row) rows.push_back(row);
  }
  return rows;
}

SelectedRows SelectList(TextView list, std::int32_t used_rows) {
  if (list.empty()) return {SelectedRows::Fault::kBadFormat, {}};
  const std::vector<RowRange> ranges = ParseRowList(list);
  if (ranges.empty()) return {SelectedRows::Fault::kBadFirstRow, {}};
  const bool below_one =
      std::any_of(ranges.begin(), ranges.end(), [](const RowRange& range) { return range.first < 1; });
  if (below_one) return {SelectedRows::Fault::kBadFormat, {}};
  return {SelectedRows::Fault::kNone, Expand(ranges, used_rows)};
}

}  // namespace

std::vector<RowRange> ParseRowList(TextView list) {
  std::vector<RowRange> ranges;
  try {
    for (const Text& piece : Split(list, u",")) {
      const RowRange range = ParsePiece(piece);
      if (range.first <= range.last) ranges.push_back(range);
    }
  } catch (const RuntimeError&) {  // the piece that does not convert ends the list
  }
  return ranges;
}

SelectedRows SelectRows(const RowChoice& choice, std::int32_t used_rows) {
  switch (choice.kind) {
    case RowChoice::Kind::kAll:
      return {SelectedRows::Fault::kNone, Expand({{1, used_rows}}, used_rows)};
    case RowChoice::Kind::kStartToEnd:
      return {SelectedRows::Fault::kNone,
              Expand({{ToLong(Trim(choice.start)), ToLong(Trim(choice.end))}}, used_rows)};
    case RowChoice::Kind::kList:
      return SelectList(Trim(choice.list), used_rows);
  }
  return {};
}

}  // namespace quorvel
