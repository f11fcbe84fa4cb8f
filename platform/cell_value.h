#pragma once

#include <cstdint>
#include <variant>

#include "platform/dates.h"
#include "platform/text.h"

namespace quorvel {

// The sheet's error values, by the number that the host gives them (2007 is #DIV/0!, 2042 #N/A).
struct CellError {
  std::int32_t number = 0;

  friend bool operator==(const CellError&, const CellError&) = default;
};

// A cell's value as the host hands it out: empty, number, text, boolean, date, error.
using CellValue = std::variant<std::monostate, double, Text, bool, Date, CellError>;

// The value as concatenation writes it: "" for empty, NumberToText, "True"/"False", DateToText. Throws
// TypeMismatch for an error value.
[[nodiscard]] Text ToText(const CellValue& value);

// The runtime's IsNumeric: empty, numbers and booleans are; dates and errors are not; a text when it reads as
// a number.
[[nodiscard]] bool IsNumeric(const CellValue& value);

// The date that the value holds or that its text denotes; nothing for everything else, numbers included (the
// runtime's IsDate).
[[nodiscard]] std::optional<Date> ReadDate(const CellValue& value, Date today);

}  // namespace quorvel
