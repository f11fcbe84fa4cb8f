#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/text.h"

namespace quorvel::sandbox {

// The values of one row, by column letter, in the order sent.
using RowValues = std::vector<std::pair<char16_t, Text>>;

// How the bytes of a value become text; nothing when they cannot.
using ValueReader = std::optional<Text> (*)(std::string_view bytes);

// One row of cell data, still encoded: segments of a column letter, byte 1 and a value, with byte 2 between
// them. A byte 2 that no letter and byte 1 follow belongs to the value. An empty row has no values. Nothing
// when the row has another form or `read` refuses a value.
[[nodiscard]] std::optional<RowValues> ReadRow(std::string_view encoded_row, ValueReader read);

// A message template, taken apart once and merged with many rows.
//
// A placeholder is two "#" round exactly one character other than blanks, blanks ignored. Where two "#"
// enclose anything else, the search goes on from the character after the first of them.
class MergeTemplate {
 public:
  explicit MergeTemplate(TextView text);

  [[nodiscard]] bool HasPlaceholders() const;

  // The text with each placeholder replaced by the row's value; one that the row has no value for stays as it
  // is written. Values are not searched for placeholders.
  [[nodiscard]] Text Merge(const RowValues& row) const;

 private:
  struct Piece {
    Text written;
    char16_t column;  // 0: plain text
  };
  std::vector<Piece> pieces_;
};

// How many SMS carry a message of `units` UTF-16 units: up to 160, then 153 each; in Unicode 70, then 67.
[[nodiscard]] std::int64_t SmsCount(std::size_t units, bool unicode);

}  // namespace quorvel::sandbox
