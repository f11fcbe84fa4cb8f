#include "platform/cell_value.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {
namespace {

struct TextOf {
  Text operator()(std::monostate) const { return {}; }
  Text operator()(double number) const { return NumberToText(number); }
  Text operator()(const Text& text) const { return text; }
  Text operator()(bool value) const { return value ? u"True" : u"False"; }
  Text operator()(Date date) const { return DateToText(date); }
  Text operator()(CellError) const { throw TypeMismatch(); }
};

}  // namespace

Text ToText(const CellValue& value) {
  return std::visit(TextOf{}, value);
}

bool IsNumeric(const CellValue& value) {
  if (const auto* const text = std::get_if<Text>(&value)) return IsNumeric(TextView(*text));
  return !std::holds_alternative<Date>(value) && !std::holds_alternative<CellError>(value);
}

std::optional<Date> ReadDate(const CellValue& value, Date today) {
  if (const auto* const date = std::get_if<Date>(&value)) return *date;
  if (const auto* const text = std::get_if<Text>(&value)) return ParseDate(*text, today);
  return std::nullopt;
}

}  // namespace quorvel
