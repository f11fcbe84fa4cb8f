#pragma once

#include "platform/form.h"

namespace quorvel {

// Asks for one line of text.
class InputForm : public Form {
 public:
  InputForm(TextView prompt, TextView title, TextView initial);

  // What was typed and confirmed; empty when cancelled.
  [[nodiscard]] const Text& answer() const { return answer_; }

 private:
  static constexpr Bounds kPrompt{8, 8, 196, 52};

  Label prompt_{*this, "prompt", kPrompt};
  Button ok_{*this, "ok", {212, 8, 50, 14}, u"OK", Button::Role::kDefault};
  Button cancel_{*this, "cancel", {212, 26, 50, 14}, u"Cancel", Button::Role::kCancel};
  TextBox input_{*this, "input", {8, 64, 254, 16}};
  Text answer_;
};

}  // namespace quorvel
