#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/excel/control_window.h"
#include "hosts/excel/dialog_metrics.h"
#include "hosts/excel/input_block.h"
#include "platform/form.h"

namespace quorvel {

// What the windows of one Win32Forms share.
struct FormsState {
  bool busy = false;           // the busy pointer is on
  std::exception_ptr failure;  // thrown by a handler; for the loop that runs the messages
};

// The dialog that shows one form. Changes of the form's controls are collected and shown by Flush; the user's
// actions go to the form at once. While the window is open, the thread's other windows take no input.
class FormWindow : public FormView, public std::enable_shared_from_this<FormWindow> {
 public:
  // The form is loaded; `owner` may be null.
  FormWindow(Form& form, HWND owner, FormsState& state);
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;
  ~FormWindow() override;

  // Null once the form is unloaded.
  [[nodiscard]] HWND handle() const { return dialog_; }
  [[nodiscard]] bool Shows(const Form& form) const { return dialog_ != nullptr && &form_ == &form; }

  void Show();
  [[nodiscard]] bool HasChanges() const { return dialog_ != nullptr && any_changed_; }
  // Shows what changed since the last time.
  void Flush();
  // Whether the message was this dialog's and has been seen to.
  [[nodiscard]] bool Translate(MSG& message);

  void ControlChanged(const Control& control, Property property) override;
  void FocusMoved(const Control& control) override;
  void Closed() override;

 private:
  static INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM first, LPARAM second);
  static LRESULT CALLBACK ControlProcedure(HWND control, UINT message, WPARAM first, LPARAM second,
                                           UINT_PTR index, DWORD_PTR window);

  // Control ids begin above those of Enter and Escape, IDOK and IDCANCEL.
  static constexpr int kFirstId = 100;

  // Runs a handler of the form; what it throws is kept for the message loop.
  template <class Handler>
  void Run(Handler&& handler);
  INT_PTR Handle(UINT message, WPARAM first, LPARAM second);
  void Command(int id, int notification);
  void Clicked(Control& control) const;
  void Changed(ControlWindow& window, int notification);
  void ComboChanged(const ControlWindow& window, int notification);
  // The control of that index, if it is of that kind; else null: other programs send messages, too.
  [[nodiscard]] ControlWindow* Find(WPARAM index, ControlKind kind);
  void ListClosed(const ControlWindow& window);
  [[nodiscard]] bool Tick(WPARAM id);
  void Lost();
  // Lets go of what belongs to the windows, while they are there.
  void Release();
  void Escape();
  void Focused(Control& control);
  void CreateControls();
  void Place(const RECT* suggested);
  void MoveFocus(HWND window);
  bool ChooseByArrow(const MSG& key);
  [[nodiscard]] HWND FirstFocus() const;
  [[nodiscard]] HWND WindowOf(const Control& control) const;

  Form& form_;
  FormsState& state_;
  HWND owner_;
  HWND dialog_ = nullptr;
  std::unique_ptr<DialogMetrics> metrics_;
  std::vector<ControlWindow> controls_;
  std::vector<unsigned> changed_;  // per control, one bit per property
  bool any_changed_ = false;
  bool showing_ = false;         // Flush is at work: notifications are echoes
  bool in_focus_event_ = false;  // the focus may not be moved now
  bool list_confirmed_ = false;  // of the list that dropped down last: closed by choosing
  bool list_told_ = false;       // its choice was told
  bool taking_focus_ = false;    // a control is: an option button then says that it was clicked
  HWND focus_ = nullptr;         // gets the focus when the window is active again
  std::optional<InputBlock> block_;
};

}  // namespace quorvel
