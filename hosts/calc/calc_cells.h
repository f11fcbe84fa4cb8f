#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <com/sun/star/util/XNumberFormatter.hpp>
#include <optional>
#include <unordered_map>

#include "hosts/calc/main_thread.h"
#include "platform/cell_value.h"

namespace quorvel {

// What a number format makes of a number, and whether it shows a text as it stands.
struct NumberKind {
  enum class Shape { kNumber, kDate, kBoolean, kByResult };

  Shape shape = Shape::kNumber;
  bool plain_text = true;
};

// Values of cells by their type and number format. Members throw UNO exceptions.
class CellReader {
 public:
  CellReader(const Context& context, const css::uno::Reference<css::frame::XModel>& document);

  [[nodiscard]] CellValue Value(const css::uno::Reference<css::table::XCell>& cell);
  // A plain number of a cell with that kind of format.
  [[nodiscard]] CellValue Number(double number, NumberKind::Shape shape) const;
  // What a cell of that format shows of a number.
  [[nodiscard]] Text Shown(double number, sal_Int32 format_key) const;
  [[nodiscard]] NumberKind KindOf(sal_Int32 format_key);

 private:
  [[nodiscard]] NumberKind Describe(sal_Int32 format_key) const;
  [[nodiscard]] NumberKind::Shape ShapeOfResult(const css::uno::Reference<css::table::XCell>& cell);

  Context context_;
  css::uno::Reference<css::util::XNumberFormats> formats_;
  css::uno::Reference<css::util::XNumberFormatter> formatter_;
  std::unordered_map<sal_Int32, NumberKind> kinds_;
  double day_offset_ = 0;  // from the document's first day to the runtime's
};

}  // namespace quorvel
