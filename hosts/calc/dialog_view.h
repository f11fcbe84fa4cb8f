#pragma once

#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XControlContainer.hpp>
#include <com/sun/star/awt/XDialog.hpp>
#include <com/sun/star/awt/XPointer.hpp>
#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "hosts/calc/control_listener.h"
#include "hosts/calc/main_thread.h"
#include "platform/form.h"

namespace quorvel {

// One form in a dialog of the application. Changes of the form are kept until Flush and then written at once;
// what the user does raises the form's events, one at a time: while an event handler lets other events run,
// the user's doings on this form are undone instead, so that nothing is pressed twice. Those that come during
// a timer's event, of which the user does not know, wait for its end.
class DialogView : public FormView, private UserActions {
 public:
  using Peer = css::uno::Reference<css::awt::XWindowPeer>;

  // Builds the dialog, hidden, over `owner` and centred on it; `form` is loaded.
  DialogView(const Context& context, Form& form, const Peer& owner);
  DialogView(const DialogView&) = delete;
  DialogView& operator=(const DialogView&) = delete;
  ~DialogView() override;

  // Shows it and disables the owner until it is closed.
  void Show();
  // Shows it modally; returns when the form is unloaded.
  void Run();
  void Flush();
  // While Run: hides the dialog until the event handler that runs has ended. A modal dialog keeps the user
  // from all other windows, which some toolkits take to the letter.
  void StandBack();

  // Whether an event handler of the form runs that the user began.
  [[nodiscard]] bool busy() const { return handling_ == Handling::kUser; }
  // Whether its window takes input. The user's doings go unheeded while a handler runs, but the toolkit
  // would end the dialog by itself.
  void SetInput(bool input);

  [[nodiscard]] Peer peer() const;
  [[nodiscard]] bool closed() const { return form_ == nullptr; }
  [[nodiscard]] bool running() const { return running_; }
  // False while it stands back, and when the toolkit has ended the dialog under an event handler.
  [[nodiscard]] bool visible() const;
  void SetPointer(const css::uno::Reference<css::awt::XPointer>& pointer);

 private:
  using Properties = unsigned;  // a bit for each Property

  // Which kind of event handler of the form runs.
  enum class Handling { kNone, kUser, kTimer };

  void ControlChanged(const Control& control, Property property) override;
  void FocusMoved(const Control& control) override;
  void Closed() override;

  void Act(Control* control, const std::function<void()>& action) override;
  void Focused(Control& control) override;
  void CloseAsked() override;
  void Opened() override;

  void Cancel();
  void AddControls();
  void Attach(Control& control);
  void PlaceBorder(const Control& control, const css::uno::Reference<css::awt::XControl>& border);
  void Centre(const Peer& owner);
  void Write(const Control& control, Properties properties);
  void WriteFocus();
  void StartTimer(const Control& control);
  void Tick(Timer& timer);
  void Handle(Handling kind, const std::function<void()>& handler);
  [[nodiscard]] css::uno::Reference<css::awt::XControl> Find(const Control& control) const;

  Context context_;
  Form* form_;
  Peer owner_;
  css::uno::Reference<css::awt::XControl> dialog_;
  std::shared_ptr<UserActionsLink> link_;
  std::map<const Control*, css::uno::Reference<css::awt::XControl>> controls_;
  std::map<const Control*, css::uno::Reference<css::awt::XControl>> borders_;  // of those that need one
  std::map<const Control*, Properties> changes_;
  std::map<const Control*, std::unique_ptr<MainThreadTimer>> timers_;
  const Control* focus_ = nullptr;  // to be moved there
  bool modeless_ = false;
  bool running_ = false;
  bool standing_back_ = false;
  bool opened_ = false;
  bool writing_ = false;  // the toolkit's events are echoes
  Handling handling_ = Handling::kNone;
  std::vector<std::pair<Control*, std::function<void()>>> waiting_;  // for the end of a timer's event
  bool close_asked_ = false;  // by the window's frame, since the dialog was last run
};

}  // namespace quorvel
