#pragma once

#include "platform/form.h"

namespace quorvel {

// Asks for one text; the application has no such box of its own.
class InputForm : public Form {
 public:
  InputForm(TextView prompt, TextView title, TextView initial);

  Label lblPrompt;
  TextBox txtAnswer;
  Button cmdOk;
  Button cmdCancel;

  // What was typed when OK was pressed, otherwise empty.
  [[nodiscard]] const Text& answer() const { return answer_; }

 protected:
  void Form_Load() override;

 private:
  InputForm(TextView prompt, TextView title, TextView initial, int prompt_height);

  Text answer_;
};

}  // namespace quorvel
