#include "platform/control.h"

#include <algorithm>

#include "platform/form.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

void Raise(const Event& event) {
  if (event) event();
}

}  // namespace

Control::Control(Form& form, const Frame* frame, ControlKind kind, std::string_view name,
                 const Bounds& bounds, TextView caption)
    : form_(form), frame_(frame), kind_(kind), name_(name), bounds_(bounds), caption_(caption) {
  form_.controls_.push_back(this);
}

void Control::Changed(Property property) const {
  if (form_.view_ != nullptr) form_.view_->ControlChanged(*this, property);
}

void Control::set_caption(TextView caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Changed(Property::kCaption);
}

void Control::set_bounds(const Bounds& bounds) {
  if (bounds_ == bounds) return;
  bounds_ = bounds;
  Changed(Property::kBounds);
}

void Control::set_visible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed(Property::kVisible);
}

void Control::set_enabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Changed(Property::kEnabled);
}

bool Control::shown() const {
  return visible_ && (frame_ == nullptr || frame_->shown());
}

bool Control::usable() const {
  return visible_ && enabled_ && (frame_ == nullptr || frame_->usable());
}

void Control::SetFocus() {
  if (!usable()) return;
  if (form_.view_ != nullptr) form_.view_->FocusMoved(*this);
  UserFocus();
}

void Control::UserFocus() {
  if (form_.active_ == this) return;
  form_.active_ = this;
  Raise(on_got_focus);
}

Label::Label(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption)
    : Control(parent.form, parent.frame, ControlKind::kLabel, name, bounds, caption) {}

Frame::Frame(Form& form, std::string_view name, const Bounds& bounds, TextView caption)
    : Control(form, nullptr, ControlKind::kFrame, name, bounds, caption) {}

TextBox::TextBox(const Container& parent, std::string_view name, const Bounds& bounds, Style style)
    : Control(parent.form, parent.frame, ControlKind::kTextBox, name, bounds, u""), style_(style) {}

void TextBox::set_text(TextView text) {
  if (text_ == text) return;
  text_ = text;
  Changed(Property::kText);
  Raise(on_change);
}

void TextBox::SelectAll() {
  Changed(Property::kSelectAll);
}

void TextBox::UserType(TextView text) {
  if (usable() && !read_only_) set_text(text);
}

void TextBox::UserClick() {
  if (!usable()) return;
  UserFocus();
  Raise(on_click);
}

Button::Button(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption,
               Role role)
    : Control(parent.form, parent.frame, ControlKind::kButton, name, bounds, caption), role_(role) {}

void Button::UserPress() {
  if (!usable()) return;
  UserFocus();
  Raise(on_click);
}

CheckBox::CheckBox(const Container& parent, std::string_view name, const Bounds& bounds, TextView caption)
    : Control(parent.form, parent.frame, ControlKind::kCheckBox, name, bounds, caption) {}

void CheckBox::set_value(bool value) {
  if (value_ == value) return;
  value_ = value;
  Changed(Property::kValue);
  Raise(on_click);
}

void CheckBox::UserSet(bool value) {
  if (usable()) set_value(value);
}

OptionButton::OptionButton(const Container& parent, std::string_view name, const Bounds& bounds,
                           TextView caption)
    : Control(parent.form, parent.frame, ControlKind::kOptionButton, name, bounds, caption) {}

void OptionButton::set_value(bool value) {
  if (value_ == value) return;
  value_ = value;
  Changed(Property::kValue);
  if (!value) return;
  for (Control* other : form().controls()) {
    if (other != this && other->kind() == ControlKind::kOptionButton && other->frame() == frame()) {
      static_cast<OptionButton*>(other)->set_value(false);
    }
  }
  Raise(on_click);
}

void OptionButton::UserChoose() {
  if (usable()) set_value(true);
}

ComboBox::ComboBox(const Container& parent, std::string_view name, const Bounds& bounds, Style style)
    : Control(parent.form, parent.frame, ControlKind::kComboBox, name, bounds, u""), style_(style) {}

std::int32_t ComboBox::item_data(int index) const {
  if (index < 0 || index >= list_count()) throw RuntimeError(381, u"Invalid property array index");
  return items_data_[static_cast<std::size_t>(index)];
}

void ComboBox::AddItem(TextView text, std::int32_t data) {
  items_.emplace_back(text);
  items_data_.push_back(data);
  Changed(Property::kItems);
}

void ComboBox::RemoveItem(int index) {
  if (index < 0 || index >= list_count()) throw InvalidCall();
  items_.erase(items_.begin() + index);
  items_data_.erase(items_data_.begin() + index);
  if (list_index_ == index) {
    list_index_ = -1;
    text_.clear();
  } else if (list_index_ > index) {
    --list_index_;
  }
  Changed(Property::kItems);
}

void ComboBox::Clear() {
  items_.clear();
  items_data_.clear();
  list_index_ = -1;
  text_.clear();
  Changed(Property::kItems);
}

void ComboBox::set_list_index(int index) {
  if (index < -1 || index >= list_count()) throw RuntimeError(380, u"Invalid property value");
  if (list_index_ == index) return;
  list_index_ = index;
  text_ = index < 0 ? Text() : items_[static_cast<std::size_t>(index)];
  Changed(Property::kListIndex);
  Raise(on_click);
}

void ComboBox::set_text(TextView text) {
  if (style_ == Style::kList) {
    const int index = Find(text);
    if (index < 0) throw RuntimeError(383, u"'Text' property is read-only");
    set_list_index(index);
    return;
  }
  if (text_ == text) return;
  text_ = text;
  list_index_ = -1;
  Changed(Property::kText);
  Raise(on_change);
}

int ComboBox::Find(TextView text) const {
  const auto found = std::find(items_.begin(), items_.end(), text);
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ComboBox::UserSelect(int index) {
  if (!usable()) return;
  if (index >= 0 && index == list_index_) return Raise(on_click);
  set_list_index(index);
}

void ComboBox::UserType(TextView text) {
  if (usable() && style_ == Style::kEditable) set_text(text);
}

Image::Image(const Container& parent, std::string_view name, const Bounds& bounds, Icon icon)
    : Control(parent.form, parent.frame, ControlKind::kImage, name, bounds, u""), icon_(icon) {}

ProgressBar::ProgressBar(const Container& parent, std::string_view name, const Bounds& bounds)
    : Control(parent.form, parent.frame, ControlKind::kProgressBar, name, bounds, u"") {}

void ProgressBar::set_value(int value) {
  if (value_ == value) return;
  value_ = value;
  Changed(Property::kValue);
}

Timer::Timer(const Container& parent, std::string_view name, int interval)
    : Control(parent.form, parent.frame, ControlKind::kTimer, name, {}, u""), interval_(interval) {}

void Timer::set_interval(int milliseconds) {
  if (interval_ == milliseconds) return;
  interval_ = milliseconds;
  Changed(Property::kTimer);
}

void Timer::Tick() {
  if (enabled() && interval_ > 0) Raise(on_timer);
}

}  // namespace quorvel
