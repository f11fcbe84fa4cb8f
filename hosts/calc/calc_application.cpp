#include "hosts/calc/calc_application.h"

#include "hosts/calc/calc_workbook.h"
#include "hosts/calc/uno_errors.h"

namespace quorvel {

std::unique_ptr<Workbook> CalcApplication::ActiveWorkbook() {
  return AskingCalc([this]() -> std::unique_ptr<Workbook> {
    const auto controller =
        frame_.is() ? frame_->getController() : css::uno::Reference<css::frame::XController>();
    if (!controller.is()) return nullptr;
    const css::uno::Reference<css::sheet::XSpreadsheetDocument> document(controller->getModel(),
                                                                         css::uno::UNO_QUERY);
    if (!document.is()) return nullptr;
    return std::make_unique<CalcWorkbook>(context_, controller);
  });
}

}  // namespace quorvel
