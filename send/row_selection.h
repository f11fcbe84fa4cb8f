#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace quorvel {

// Rows `first` to `last`, both included; none when `first` is the greater.
struct RowRange {
  std::int32_t first = 0;
  std::int32_t last = 0;

  friend bool operator==(const RowRange&, const RowRange&) = default;
};

// The ranges of a list such as "2-19, 27-35, 40", in the order written; a range that holds no row is left
// out. A piece that is no row number ends the list: the ranges before it stand.
[[nodiscard]] std::vector<RowRange> ParseRowList(TextView list);

// How the user chose the rows of a send.
struct RowChoice {
  enum class Kind { kAll, kStartToEnd, kList };

  Kind kind = Kind::kAll;
  Text start;  // for kStartToEnd
  Text end;
  Text list;  // for kList
};

struct SelectedRows {
  enum class Fault {
    kNone,
    kBadFormat,    // a list without a text or with a row below 1
    kBadFirstRow,  // a list whose first piece gives no row
  };

  Fault fault = Fault::kNone;
  std::vector<std::int32_t> rows;
};

// The rows in the order of the walk, never beyond `used_rows`. Throws RuntimeError 13 or 6 when the start or
// end row is no row number.
[[nodiscard]] SelectedRows SelectRows(const RowChoice& choice, std::int32_t used_rows);

}  // namespace quorvel
