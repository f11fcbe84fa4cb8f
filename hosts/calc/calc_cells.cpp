#include "hosts/calc/calc_cells.h"

#include <algorithm>
#include <array>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using css::util::NumberFormat::DATE;
using css::util::NumberFormat::LOGICAL;
using css::util::NumberFormat::TIME;

struct ErrorNumber {
  sal_Int32 calc;
  std::int32_t sheet;
};

constexpr ErrorNumber kErrorNumbers[] = {
    {503, 2036},    // #NUM!
    {519, 2015},    // #VALUE!
    {521, 2000},    // #NULL!
    {524, 2023},    // #REF!
    {525, 2029},    // #NAME?
    {532, 2007},    // #DIV/0!
    {32767, 2042},  // #N/A
};
constexpr std::int32_t kValueError = 2015;  // for errors that only Calc has

CellError ToCellError(sal_Int32 error) {
  const auto* const found = std::find_if(std::begin(kErrorNumbers), std::end(kErrorNumbers),
                                         [error](const auto& entry) { return entry.calc == error; });
  return {found == std::end(kErrorNumbers) ? kValueError : found->sheet};
}

Text TextOf(const Reference<css::table::XCell>& cell) {
  return FromUno(Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->getString());
}

// A format's section for texts is its fourth, or the one that holds "@".
bool ShowsTextAsItStands(const rtl::OUString& format) {
  constexpr std::ptrdiff_t kMostSections = 3;
  if (format == "@") return true;
  const Text code = FromUno(format);
  return code.find(u'@') == Text::npos && std::count(code.begin(), code.end(), u';') < kMostSections;
}

NumberKind::Shape ShapeOfType(sal_Int16 type) {
  if ((type & (DATE | TIME)) != 0) return NumberKind::Shape::kDate;
  if ((type & LOGICAL) != 0) return NumberKind::Shape::kBoolean;
  return NumberKind::Shape::kNumber;
}

}  // namespace

CellReader::CellReader(const Context& context, const Reference<css::frame::XModel>& document)
    : context_(context) {
  const Reference<css::util::XNumberFormatsSupplier> supplier(document, UNO_QUERY_THROW);
  formats_ = supplier->getNumberFormats();
  formatter_ = CreateService<css::util::XNumberFormatter>(context, "com.sun.star.util.NumberFormatter");
  formatter_->attachNumberFormatsSupplier(supplier);
  css::util::Date first_day;
  GetProperty(document, "NullDate") >>= first_day;
  const DateParts parts{.year = first_day.Year, .month = first_day.Month, .day = first_day.Day};
  day_offset_ = MakeDate(parts).value_or(Date{}).serial;
}

CellValue CellReader::Number(double number, NumberKind::Shape shape) const {
  switch (shape) {
    case NumberKind::Shape::kDate:
      return Date{number + day_offset_};
    case NumberKind::Shape::kBoolean:
      return number != 0;
    default:
      return number;
  }
}

Text CellReader::Shown(double number, sal_Int32 format_key) const {
  return FromUno(formatter_->convertNumberToString(format_key, number));
}

NumberKind CellReader::KindOf(sal_Int32 format_key) {
  const auto known = kinds_.find(format_key);
  if (known != kinds_.end()) return known->second;
  return kinds_[format_key] = Describe(format_key);
}

NumberKind CellReader::Describe(sal_Int32 format_key) const {
  const Reference<css::uno::XInterface> format = formats_->getByKey(format_key);
  sal_Int16 type = 0;
  GetProperty(format, "Type") >>= type;
  rtl::OUString code;
  GetProperty(format, "FormatString") >>= code;
  bool standard = false;
  GetProperty(format, "StandardFormat") >>= standard;
  const bool general = standard && (type & css::util::NumberFormat::NUMBER) != 0;
  return {.shape = general ? NumberKind::Shape::kByResult : ShapeOfType(type),
          .plain_text = ShowsTextAsItStands(code)};
}

CellValue CellReader::Value(const Reference<css::table::XCell>& cell) {
  const css::table::CellContentType content = cell->getType();
  if (content == css::table::CellContentType_EMPTY) return {};
  if (content == css::table::CellContentType_TEXT) return TextOf(cell);
  const bool formula = content == css::table::CellContentType_FORMULA;
  if (formula) {
    if (const sal_Int32 error = cell->getError(); error != 0) return ToCellError(error);
    sal_Int32 result = 0;
    GetProperty(cell, "FormulaResultType2") >>= result;
    if (result == css::sheet::FormulaResult::STRING) return TextOf(cell);
  }
  sal_Int32 format_key = 0;
  GetProperty(cell, "NumberFormat") >>= format_key;
  const NumberKind::Shape shape = KindOf(format_key).shape;
  const bool by_result = formula && shape == NumberKind::Shape::kByResult;
  return Number(cell->getValue(), by_result ? ShapeOfResult(cell) : shape);
}

// A formula in a cell without a format of its own is shown as its result wants it: what it shows tells what
// it is.
NumberKind::Shape CellReader::ShapeOfResult(const Reference<css::table::XCell>& cell) {
  const rtl::OUString shown = ToUno(TextOf(cell));
  try {
    return KindOf(formatter_->detectNumberFormat(0, shown)).shape;
  } catch (const css::uno::Exception&) {  // shows no number of any kind
    return NumberKind::Shape::kNumber;
  }
}

}  // namespace quorvel
