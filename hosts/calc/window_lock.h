#pragma once

#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/frame/XDispatchProviderInterception.hpp>
#include <com/sun/star/frame/XDispatchProviderInterceptor.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <vector>

#include "hosts/calc/main_thread.h"

namespace quorvel {

// While it lives, the windows of one document take no commands, by menus, toolbars or keys, and all but that
// of the add-in's command take no input: nobody but the add-in changes the document. The command's own window
// is left to the add-in's forms, which stand over it; a disabled window alone does not do, since its menu bar
// may be the desktop's.
class WindowLock {
 public:
  // `frame` is the command's own. Throws UNO exceptions.
  WindowLock(const Context& context, const css::uno::Reference<css::frame::XFrame>& frame);
  WindowLock(const WindowLock&) = delete;
  WindowLock& operator=(const WindowLock&) = delete;
  ~WindowLock();

 private:
  struct Locked {
    css::uno::Reference<css::awt::XWindow> window;  // null when it was not disabled
    css::uno::Reference<css::frame::XDispatchProviderInterception> commands;
    css::uno::Reference<css::frame::XDispatchProviderInterceptor> refusal;
  };

  WindowLock() = default;

  std::vector<Locked> locked_;
};

}  // namespace quorvel
