#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/util/XModifyBroadcaster.hpp>
#include <com/sun/star/util/XModifyListener.hpp>
#include <memory>

namespace quorvel {

// Notices changes of a range's cells, by whatever makes them: a macro, a recalculation, another program.
class ChangeWatch {
 public:
  // Throws UNO exceptions.
  ChangeWatch(const css::uno::Reference<css::sheet::XSpreadsheet>& sheet,
              const css::table::CellRangeAddress& range);
  ChangeWatch(const ChangeWatch&) = delete;
  ChangeWatch& operator=(const ChangeWatch&) = delete;
  ~ChangeWatch();

  // Whether anything has changed since the last time, or the beginning.
  [[nodiscard]] bool TakeChange();

 private:
  std::shared_ptr<bool> changed_;  // shared with the listener, which may outlive this
  css::uno::Reference<css::util::XModifyBroadcaster> range_;
  css::uno::Reference<css::util::XModifyListener> listener_;
};

}  // namespace quorvel
