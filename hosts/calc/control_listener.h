#pragma once

#include <com/sun/star/awt/XActionListener.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XFocusListener.hpp>
#include <com/sun/star/awt/XItemListener.hpp>
#include <com/sun/star/awt/XMouseListener.hpp>
#include <com/sun/star/awt/XTextListener.hpp>
#include <com/sun/star/awt/XTopWindowListener.hpp>
#include <functional>
#include <memory>

#include "platform/control.h"

namespace quorvel {

// What a dialog wants to know of its user.
class UserActions {
 public:
  // `action` plays on the control what the user did to it; it may be called later, while the dialog is there.
  virtual void Act(Control* control, const std::function<void()>& action) = 0;
  virtual void Focused(Control& control) = 0;
  virtual void CloseAsked() = 0;
  virtual void Opened() = 0;

 protected:
  ~UserActions() = default;
};

// The toolkit's listeners may outlive the dialog, which clears `actions` when it goes.
struct UserActionsLink {
  UserActions* actions = nullptr;
};

// Has everything that the user does to the toolkit's control reported as an action on `control`.
void ListenTo(const css::uno::Reference<css::awt::XControl>& toolkit_control, Control& control,
              const std::shared_ptr<UserActionsLink>& link);

// Has opening and closing of the dialog's window reported.
void ListenToWindow(const css::uno::Reference<css::awt::XControl>& dialog,
                    const std::shared_ptr<UserActionsLink>& link);

}  // namespace quorvel
