#pragma once

#include <com/sun/star/frame/XDesktop.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <com/sun/star/util/XCloseBroadcaster.hpp>
#include <com/sun/star/util/XCloseListener.hpp>

#include "hosts/calc/main_thread.h"

namespace quorvel {

// While it lives, the document cannot be closed and the application cannot be ended.
class CloseGuard {
 public:
  // `document` may be null. Throws UNO exceptions.
  CloseGuard(const Context& context, const css::uno::Reference<css::uno::XInterface>& document);
  CloseGuard(const CloseGuard&) = delete;
  CloseGuard& operator=(const CloseGuard&) = delete;
  ~CloseGuard();

 private:
  css::uno::Reference<css::frame::XDesktop> desktop_;
  css::uno::Reference<css::util::XCloseBroadcaster> document_;
  css::uno::Reference<css::frame::XTerminateListener> terminate_veto_;
  css::uno::Reference<css::util::XCloseListener> close_veto_;
};

}  // namespace quorvel
