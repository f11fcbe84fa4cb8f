#pragma once

#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <cstdint>
#include <memory>
#include <vector>

#include "hosts/calc/dialog_view.h"
#include "platform/clock.h"
#include "platform/forms.h"

namespace quorvel {

// The add-in's windows in the application, for the frame in which its command was given. A modeless form
// disables the window under it; both kinds stand over the form that is open, or else over the frame.
class CalcForms : public Forms {
 public:
  CalcForms(const Context& context, const Clock& clock);
  ~CalcForms() override;

  // Where the windows of the next command go. Null at its end.
  void SetFrame(const css::uno::Reference<css::frame::XFrame>& frame);

  void Show(Form& form) override;
  void ShowModal(Form& form) override;
  Answer MsgBox(TextView prompt, int style, TextView title) override;
  Text InputBox(TextView prompt, TextView title, TextView initial) override;
  void SetPointer(Pointer pointer) override;
  void Yield() override;

  // Yield without its clock: writes all changes and runs the events that wait.
  void RunEvents();

 private:
  DialogView& Open(Form& form);
  void DropClosed();
  void Drop(const DialogView& view);
  // The dialog on top, if one of its event handlers runs; else null.
  [[nodiscard]] DialogView* Busy() const;
  // The window that a new one stands over. Throws RuntimeError when there is none.
  [[nodiscard]] DialogView::Peer Top() const;

  Context context_;
  const Clock& clock_;
  css::uno::Reference<css::awt::XToolkitExperimental> toolkit_;
  css::uno::Reference<css::frame::XFrame> frame_;
  std::vector<std::unique_ptr<DialogView>> views_;  // the topmost last
  std::int64_t next_events_ = 0;
};

}  // namespace quorvel
