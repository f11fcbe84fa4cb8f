#pragma once

#include "platform/form.h"

namespace quorvel {

// Asks for one text; the application has no such box of its own.
class InputForm : public Form {
 public:
  InputForm(TextView prompt, TextView title, TextView initial);

  Label lblPrompt{*this, "lblPrompt", {8, 8, 244, 76}};
  TextBox txtAnswer{*this, "txtAnswer", {8, 90, 244, 16}};
  Button cmdOk{*this, "cmdOk", {134, 114, 56, 18}, u"OK", Button::Role::kDefault};
  Button cmdCancel{*this, "cmdCancel", {196, 114, 56, 18}, u"Cancel", Button::Role::kCancel};

  // What was typed when OK was pressed, otherwise empty.
  [[nodiscard]] const Text& answer() const { return answer_; }

 protected:
  void Form_Load() override;

 private:
  Text answer_;
};

}  // namespace quorvel
