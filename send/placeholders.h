#pragma once

#include <string>
#include <vector>

#include "platform/text.h"

namespace quorvel {

// The column letters that a template names, in order of appearance, repeats kept. A placeholder is a pair of
// "#" round one letter, blanks between them ignored; everything else is ordinary text.
[[nodiscard]] std::vector<char16_t> ScanPlaceholders(TextView message);

// What fills one placeholder column in one row.
struct CellText {
  char16_t column = 0;
  Text text;
};

// `message` with every "#X#" replaced by the text of column X. Placeholders written with blanks stay: only
// the gateway fills those.
[[nodiscard]] Text Personalise(TextView message, const std::vector<CellText>& cells);

// The characters that structure the cell data.
inline constexpr char16_t kColumnMark = 1;   // behind the column letter
inline constexpr char16_t kSegmentMark = 2;  // between a row's segments
inline constexpr char kRowMark = 127;        // behind a row, not encoded

// One row's part of the cell data before it is encoded: letter, character 1, value; character 2 between the
// columns. Characters 1 and 127 in a value are dropped; with `hex` the value is hex text.
[[nodiscard]] Text RowCellData(const std::vector<CellText>& cells, bool hex);

}  // namespace quorvel
