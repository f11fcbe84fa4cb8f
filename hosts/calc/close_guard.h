#pragma once

#include <com/sun/star/frame/XDesktop.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <com/sun/star/util/XCloseBroadcaster.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <vector>

#include "hosts/calc/main_thread.h"

namespace quorvel {

// While it lives, a document and its windows cannot be closed, nor can the application be ended.
class CloseGuard {
 public:
  // Guards the document that `frame` shows, and the frame if it shows none. Throws UNO exceptions.
  CloseGuard(const Context& context, const css::uno::Reference<css::frame::XFrame>& frame);
  CloseGuard(const CloseGuard&) = delete;
  CloseGuard& operator=(const CloseGuard&) = delete;
  ~CloseGuard();

 private:
  // Guards nothing yet.
  explicit CloseGuard(const Context& context);
  void Guard(const css::uno::Reference<css::uno::XInterface>& closeable);

  css::uno::Reference<css::frame::XDesktop> desktop_;
  std::vector<css::uno::Reference<css::util::XCloseBroadcaster>> guarded_;
  css::uno::Reference<css::frame::XTerminateListener> terminate_veto_;
  css::uno::Reference<css::util::XCloseListener> close_veto_;
};

}  // namespace quorvel
