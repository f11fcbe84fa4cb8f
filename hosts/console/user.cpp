#include "hosts/console/user.h"

#include <stdexcept>

#include "hosts/console/exit_status.h"

namespace quorvel {

namespace {

constexpr std::size_t kMostItemsNamed = 16;

void Reach(const Control& control) {
  if (!control.usable()) throw std::logic_error("out of reach: " + std::string(control.name()));
}

std::string Choices(const std::vector<Text>& items) {
  if (items.empty()) return "nothing";
  if (items.size() > kMostItemsNamed) return ToUtf8(items.front()) + " to " + ToUtf8(items.back());
  std::string names;
  for (const Text& item : items) names += (names.empty() ? "" : ", ") + ToUtf8(item);
  return names;
}

}  // namespace

void Type(TextBox& box, TextView text) {
  Reach(box);
  box.UserType(text);
}

void Type(ComboBox& picker, TextView text) {
  Reach(picker);
  picker.UserType(text);
}

void Tick(CheckBox& box, bool value) {
  Reach(box);
  box.UserSet(value);
}

void Choose(OptionButton& option) {
  Reach(option);
  option.UserChoose();
}

void Press(Button& button) {
  Reach(button);
  button.UserPress();
}

void Pick(ComboBox& picker, TextView item, std::string_view option) {
  Reach(picker);
  const int index = picker.Find(item);
  if (index < 0) {
    throw UsageError(std::string(option) + ": \"" + ToUtf8(item) + "\" is none of " +
                     Choices(picker.items()));
  }
  picker.UserSelect(index);
}

Text ColumnName(const std::string& option_value) {
  return UpperCase(FromUtf8(option_value));
}

}  // namespace quorvel
