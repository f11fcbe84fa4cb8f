#include "hosts/calc/change_watch.h"

#include <cppuhelper/implbase1.hxx>
#include <utility>

#include "hosts/calc/uno_errors.h"

namespace quorvel {

namespace {

class Listener : public cppu::WeakImplHelper1<css::util::XModifyListener> {
 public:
  explicit Listener(std::shared_ptr<bool> changed) : changed_(std::move(changed)) {}

  void SAL_CALL modified(const css::lang::EventObject& /*event*/) override { *changed_ = true; }
  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

 private:
  std::shared_ptr<bool> changed_;
};

}  // namespace

ChangeWatch::ChangeWatch(const css::uno::Reference<css::sheet::XSpreadsheet>& sheet,
                         const css::table::CellRangeAddress& range)
    : changed_(std::make_shared<bool>(false)),
      range_(sheet->getCellRangeByPosition(range.StartColumn, range.StartRow, range.EndColumn, range.EndRow),
             css::uno::UNO_QUERY_THROW),
      listener_(new Listener(changed_)) {
  range_->addModifyListener(listener_);
}

ChangeWatch::~ChangeWatch() {
  AtEntry("change watch", [this] { range_->removeModifyListener(listener_); });
}

bool ChangeWatch::TakeChange() {
  return std::exchange(*changed_, false);
}

}  // namespace quorvel
