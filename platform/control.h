#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/text.h"

namespace quorvel {

class Form;
class Frame;

// In dialog units (a quarter of the average character width by an eighth of its height), relative to the
// form's client area, also for controls inside a frame.
struct Bounds {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  friend bool operator==(const Bounds&, const Bounds&) = default;
};

enum class ControlKind {
  kLabel,
  kTextBox,
  kButton,
  kCheckBox,
  kOptionButton,
  kComboBox,
  kFrame,
  kImage,
  kProgressBar,
  kTimer
};

// What a view has to read again.
enum class Property {
  kCaption,
  kVisible,
  kEnabled,
  kBounds,
  kText,
  kSelectAll,
  kValue,
  kItems,
  kListIndex,
  kTimer
};

using Event = std::function<void()>;

// What every control of a form has. The form's code sets properties; a view shows them and plays the user by
// the members whose names begin with "User". Those do nothing on a control that is hidden or disabled, as a
// real user cannot reach it. A caption's "&" marks the access key.
class Control {
 public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  [[nodiscard]] ControlKind kind() const { return kind_; }
  [[nodiscard]] std::string_view name() const { return name_; }
  [[nodiscard]] Form& form() const { return form_; }
  [[nodiscard]] const Frame* frame() const { return frame_; }

  [[nodiscard]] const Text& caption() const { return caption_; }
  void set_caption(TextView caption);
  [[nodiscard]] const Bounds& bounds() const { return bounds_; }
  void set_bounds(const Bounds& bounds);
  [[nodiscard]] bool visible() const { return visible_; }
  void set_visible(bool visible);
  [[nodiscard]] bool enabled() const { return enabled_; }
  void set_enabled(bool enabled);

  // Visible, and so is its frame.
  [[nodiscard]] bool shown() const;
  // Shown and enabled, and so is its frame: within the user's reach.
  [[nodiscard]] bool usable() const;

  // Moves the focus here; without effect on a control that is not usable.
  void SetFocus();

  // The view says that the focus came here.
  void UserFocus();

  Event on_got_focus;

 protected:
  Control(Form& form, const Frame* frame, ControlKind kind, std::string_view name, const Bounds& bounds,
          TextView caption);

  void Changed(Property property) const;

 private:
  Form& form_;
  const Frame* frame_;
  ControlKind kind_;
  std::string_view name_;
  Bounds bounds_;
  Text caption_;
  bool visible_ = true;
  bool enabled_ = true;
};

// Where a control is placed: directly on a form or in one of its frames.
struct Container {
  Form& form;
  const Frame* frame;  // null on the form itself
};

class Label : public Control {
 public:
  Label(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption = u"");
};

// A captioned group of controls, shown, hidden and disabled as one.
class Frame : public Control {
 public:
  Frame(Form& form, std::string_view name, const Bounds& bounds, TextView caption = u"");
  operator Container() const {
    return {form(), this};
  }  // NOLINT(google-explicit-constructor): reads as "in this frame"
};

class TextBox : public Control {
 public:
  enum class Style { kSingleLine, kPassword, kMultiLine, kRichText };

  TextBox(const Container& parent, std::string_view name, const Bounds& bounds,
          Style style = Style::kSingleLine);

  [[nodiscard]] Style style() const { return style_; }
  [[nodiscard]] const Text& text() const { return text_; }
  void set_text(TextView text);  // raises on_change when the text differs
  [[nodiscard]] bool read_only() const { return read_only_; }
  void set_read_only(bool read_only) { read_only_ = read_only; }
  // Selects the whole text.
  void SelectAll();

  void UserType(TextView text);  // the whole new text
  void UserClick();

  Event on_change;
  Event on_click;

 private:
  Style style_;
  Text text_;
  bool read_only_ = false;
};

class Button : public Control {
 public:
  // Enter presses the default button, Escape the cancel button.
  enum class Role { kPlain, kDefault, kCancel };

  Button(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption,
         Role role = Role::kPlain);

  [[nodiscard]] Role role() const { return role_; }

  void UserPress();

  Event on_click;

 private:
  Role role_;
};

class CheckBox : public Control {
 public:
  CheckBox(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption);

  [[nodiscard]] bool value() const { return value_; }
  void set_value(bool value);  // raises on_click when the value differs

  void UserSet(bool value);

  Event on_click;

 private:
  bool value_ = false;
};

// One choice of a group: all the option buttons of the same frame, or of the form itself. None need be
// chosen.
class OptionButton : public Control {
 public:
  OptionButton(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption);

  [[nodiscard]] bool value() const { return value_; }
  void set_value(bool value);  // choosing one clears the others of its group; raises on_click when chosen

  void UserChoose();

  Event on_click;

 private:
  bool value_ = false;
};

class ComboBox : public Control {
 public:
  enum class Style { kEditable, kList };

  ComboBox(const Container& parent, std::string_view name, const Bounds& bounds, Style style = Style::kList);

  [[nodiscard]] Style style() const { return style_; }
  [[nodiscard]] const std::vector<Text>& items() const { return items_; }
  [[nodiscard]] int list_count() const { return static_cast<int>(items_.size()); }
  // Item data, 0 unless given. Throws RuntimeError 381 for an index outside the list.
  [[nodiscard]] std::int32_t item_data(int index) const;
  void AddItem(TextView text, std::int32_t data = 0);
  void RemoveItem(int index);  // the chosen item, when removed, leaves nothing chosen; throws RuntimeError 5
                               // outside the list
  void Clear();

  // The chosen item, -1 for none. Setting another raises on_click; an index outside the list throws
  // RuntimeError 380.
  [[nodiscard]] int list_index() const { return list_index_; }
  void set_list_index(int index);
  // The chosen item's text, or what was typed into an editable one.
  [[nodiscard]] const Text& text() const { return text_; }
  // On a list, chooses the first item of that text; throws RuntimeError 383 when there is none.
  void set_text(TextView text);
  // The first item of that text, -1 for none.
  [[nodiscard]] int Find(TextView text) const;

  void UserSelect(int index);    // raises on_click also for the item that is chosen already
  void UserType(TextView text);  // editable ones only

  Event on_click;
  Event on_change;  // text typed

 private:
  Style style_;
  std::vector<Text> items_;
  std::vector<std::int32_t> items_data_;  // parallel to items_
  int list_index_ = -1;
  Text text_;
};

class Image : public Control {
 public:
  enum class Icon { kCritical, kWarning, kInformation };

  Image(const Container& parent, std::string_view name, const Bounds& bounds, Icon icon);

  [[nodiscard]] Icon icon() const { return icon_; }

 private:
  Icon icon_;
};

// From 0 to 100.
class ProgressBar : public Control {
 public:
  ProgressBar(const Container& parent, std::string_view name, const Bounds& bounds);

  [[nodiscard]] int value() const { return value_; }
  void set_value(int value);

 private:
  int value_ = 0;
};

// Ticks every interval() milliseconds while its form is loaded; an interval of 0 stops it.
class Timer : public Control {
 public:
  Timer(const Container& parent, std::string_view name, int interval = 0);

  [[nodiscard]] int interval() const { return interval_; }
  void set_interval(int milliseconds);

  // The view's clock says that the interval has passed.
  void Tick();

  Event on_timer;

 private:
  int interval_;
};

}  // namespace quorvel
