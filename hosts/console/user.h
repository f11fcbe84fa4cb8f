#pragma once

#include <string>
#include <string_view>

#include "platform/control.h"

namespace quorvel {

// The user's hands on a form. A control that is out of the user's reach is std::logic_error: a value that
// was given must not get lost.

void Type(TextBox& box, TextView text);
void Type(ComboBox& picker, TextView text);  // into an editable one
void Tick(CheckBox& box, bool value = true);
void Choose(OptionButton& option);
void Press(Button& button);

// Chooses the item of that text. Throws UsageError, naming `option` and what there is to choose from, when
// there is none.
void Pick(ComboBox& picker, TextView item, std::string_view option);

// A column as the pickers name it: in upper case.
[[nodiscard]] Text ColumnName(const std::string& option_value);

}  // namespace quorvel
