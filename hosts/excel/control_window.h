#pragma once

#include "hosts/excel/dialog_metrics.h"
#include "hosts/excel/win32.h"
#include "platform/control.h"

namespace quorvel {

// The native window of one control, a child of its form's dialog. The dialog owns the window.
class ControlWindow {
 public:
  // `id` is the window's control id. A timer gets no window.
  ControlWindow(Control& control, HWND dialog, int id);

  [[nodiscard]] Control& control() const { return *control_; }
  [[nodiscard]] HWND handle() const { return handle_; }
  // Whether the user reads or writes several lines here.
  [[nodiscard]] bool HasLines() const;

  // Font, place and icon at a resolution.
  void Place(const DialogMetrics& metrics);
  // Shows and enables the window as the control and its frame say.
  void ShowState() const;
  // Whether the control has that property, and something that shows it.
  [[nodiscard]] bool CanShow(Property property) const;
  // Makes the window show this property of the control; CanShow(property).
  void Show(Property property, const DialogMetrics& metrics);
  // Gives back what the window was lent; to be called before the window goes.
  void Release() const;
  // The text that the user has put into the window.
  [[nodiscard]] Text ReadText() const;
  // Lets the text of a rich text box run as its first letter does.
  void ShowDirection(const Text& text);

 private:
  [[nodiscard]] bool IsRichText() const;
  void ShowCaption() const;
  void ShowText();
  void ShowValue() const;
  void ShowItems(const DialogMetrics& metrics);
  void ShowListIndex();
  void ShowTimer() const;

  Control* control_;
  HWND dialog_;
  int id_;
  HWND handle_ = nullptr;
  bool right_to_left_ = false;
};

}  // namespace quorvel
