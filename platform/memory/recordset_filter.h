#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <variant>
#include <vector>

#include "platform/dates.h"
#include "platform/recordset.h"
#include "platform/text.h"

namespace quorvel {

struct FieldDefinition {
  Text name;
  FieldType type = FieldType::kVarChar;
  std::int32_t size = 0;  // a text field's limit, in UTF-16 units
  std::int32_t attributes = 0;
};

// One field of one record: NULL, or what the field's type holds (integer, timestamp, text).
using FieldData = std::variant<std::monostate, std::int32_t, Date, Text>;

// The position of the field called `name`, case ignored; throws 3265 when there is none.
[[nodiscard]] std::size_t FindField(std::span<const FieldDefinition> fields, TextView name);

// A filter of the data-access library: clauses "field operator value" joined by AND and OR.
//   field     name or [name], case ignored
//   operator  < > <= >= <> = LIKE
//   value     'text' ('' for a quote), #'text'# (the quotes belong to the text), #date#, a number, NULL
// Where the library's documentation leaves it open:
// - Keywords are taken in any case; blanks, tabs and line ends separate, and are needed only between words.
// - AND and OR have no precedence: a chain without parentheses is evaluated from left to right.
// - A group in parentheses that holds an OR cannot be an operand of AND on either side (3001), nor can a
// chain
//   that such a group has entered. Groups nest up to 64 deep.
// - Text compares by its UTF-16 units with case ignored. A number without quotes means the text as written
//   when the field is text.
// - A quoted number against an integer field is a number; fractions are compared as they are.
// - Against a timestamp a quoted date is as good as one in "#"; both are read month first, or year first, and
//   compare to the whole second. A date in "#" against any other field, and a number without quotes against a
//   timestamp, is the wrong type (3421).
// - NULL goes with = and <> only and is the one comparison that a NULL field can satisfy.
// - LIKE takes a text field and a quoted text: 'a*' begins with a, '*a*' holds a, 'a' is a, '*' is any text;
//   "%" and "*" are the same, "_" is itself. Every other place for a wildcard is refused (3001).
class RecordsetFilter {
 public:
  // `today` supplies the year that a date leaves out. Throws 3001 for what the grammar does not know, 3265
  // for an unknown field, 3421 for a value that cannot become the field's type.
  [[nodiscard]] static RecordsetFilter Parse(TextView text, std::span<const FieldDefinition> fields,
                                             Date today);

  // Whether the record passes; one FieldData for each of the fields that the filter was parsed for.
  [[nodiscard]] bool Matches(std::span<const FieldData> record) const;

 private:
  friend class FilterParser;

  // A comparison of one field with a value that was converted when the filter was parsed.
  struct Clause {
    std::size_t field = 0;
    std::function<bool(const FieldData&)> holds;
  };
  // Passes over the steps before `target` when the result so far is `when`: false for AND, true for OR.
  struct Skip {
    bool when = false;
    std::size_t target = 0;
  };

  // The result is that of the last clause evaluated.
  std::vector<std::variant<Clause, Skip>> steps_;
};

}  // namespace quorvel
