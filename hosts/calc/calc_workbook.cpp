#include "hosts/calc/calc_workbook.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr int kNoSuchMember = 438;

// Something without cells is in front: a page preview, for one.
Reference<css::sheet::XSpreadsheetView> SheetView(const Reference<css::frame::XController>& controller) {
  const Reference<css::sheet::XSpreadsheetView> view(controller, UNO_QUERY);
  if (!view.is()) throw RuntimeError(kNoSuchMember, u"Object doesn't support this property or method");
  return view;
}

// The application lets a program change what it keeps its user from changing.
bool IsLocked(const Reference<css::uno::XInterface>& document) {
  return Reference<css::frame::XStorable>(document, UNO_QUERY_THROW)->isReadonly() ||
         Reference<css::util::XProtectable>(document, UNO_QUERY_THROW)->isProtected();
}

}  // namespace

CalcWorkbook::CalcWorkbook(const Context& context, const Reference<css::frame::XController>& controller)
    : context_(context), controller_(controller) {
  document_ = AskingCalc([this] {
    return Reference<css::sheet::XSpreadsheetDocument>(controller_->getModel(), UNO_QUERY_THROW);
  });
}

std::unique_ptr<Sheet> CalcWorkbook::ActiveSheet() {
  const auto view = SheetView(controller_);
  return AskingCalc(
      [&] { return std::make_unique<CalcSheet>(context_, controller_, view->getActiveSheet()); });
}

std::vector<Text> CalcWorkbook::SheetNames() {
  return AskingCalc([this] {
    std::vector<Text> names;
    for (const rtl::OUString& name : document_->getSheets()->getElementNames()) {
      names.push_back(FromUno(name));
    }
    return names;
  });
}

std::unique_ptr<Sheet> CalcWorkbook::AddSheet(TextView name) {
  const auto view = SheetView(controller_);
  return AskingCalc([&] {
    const Reference<css::sheet::XSpreadsheets> sheets = document_->getSheets();
    const rtl::OUString sheet_name = ToUno(name);
    if (IsLocked(document_)) {
      throw RuntimeError(kApplicationError,
                         u"The sheet cannot be added: the document is read-only or protected.");
    }
    if (sheets->hasByName(sheet_name)) {
      throw RuntimeError(kApplicationError, u"There is a sheet of that name already.");
    }
    const auto count = Reference<css::container::XIndexAccess>(sheets, UNO_QUERY_THROW)->getCount();
    try {
      sheets->insertNewByName(sheet_name, static_cast<sal_Int16>(count));
    } catch (const css::uno::RuntimeException&) {  // gives no reason
      throw RuntimeError(kApplicationError, u"The sheet cannot be added: its name is not allowed.");
    }
    const Reference<css::sheet::XSpreadsheet> sheet(sheets->getByName(sheet_name), UNO_QUERY_THROW);
    view->setActiveSheet(sheet);
    return std::make_unique<CalcSheet>(context_, controller_, sheet);
  });
}

}  // namespace quorvel
