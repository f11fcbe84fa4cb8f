#pragma once

#include <string_view>
#include <vector>

#include "platform/control.h"
#include "platform/text.h"

namespace quorvel {

// What a toolkit shows of one loaded form. Told of every change that the form's code makes; a change that the
// user made through the view is echoed too, and the view ignores what it shows already. Changes may come in a
// tight loop: a view repaints by the clock (20 times a second at most), not by the call.
class FormView {
 public:
  virtual ~FormView() = default;

  virtual void ControlChanged(const Control& control, Property property) = 0;
  virtual void FocusMoved(const Control& control) = 0;
  // The form was unloaded; the view must not touch it any more.
  virtual void Closed() = 0;
};

// A form as data: its controls in tab order, and one member function per event. Its state is the object's
// lifetime: a new object is in the design state.
class Form {
 public:
  Form(std::string_view name, TextView caption, int width, int height);
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form();

  [[nodiscard]] std::string_view name() const { return name_; }
  [[nodiscard]] const Text& caption() const { return caption_; }
  void set_caption(TextView caption) { caption_ = caption; }  // before the form is shown
  // The client area, in dialog units.
  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
  // The control of that name; null when there is none.
  [[nodiscard]] Control* Find(std::string_view name) const;
  // The control that has the focus; null before any had it.
  [[nodiscard]] Control* active_control() const { return active_; }

  [[nodiscard]] bool loaded() const { return state_ == State::kLoaded; }
  // Runs Form_Load, once. Called by whoever shows the form.
  void Load();
  // Ends the form's life: its view closes and a modal show returns.
  void Unload();
  // The user closes the window by its frame.
  void UserClose();

  // The toolkit attaches its view after Load; the form does not own it. Null detaches.
  void AttachView(FormView* view) { view_ = view; }

  operator Container() {
    return {*this, nullptr};
  }  // NOLINT(google-explicit-constructor): reads as "on this form"

 protected:
  virtual void Form_Load() {}
  // Whether closing by the frame unloads the form.
  virtual bool Form_QueryUnload() { return true; }

 private:
  friend class Control;
  enum class State { kDesign, kLoaded, kUnloaded };

  std::string_view name_;
  Text caption_;
  int width_;
  int height_;
  std::vector<Control*> controls_;
  Control* active_ = nullptr;
  State state_ = State::kDesign;
  FormView* view_ = nullptr;
};

}  // namespace quorvel
