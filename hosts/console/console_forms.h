#pragma once

#include <functional>
#include <optional>

#include "hosts/console/output.h"
#include "hosts/console/progress_line.h"
#include "hosts/console/terminal.h"
#include "platform/clock.h"
#include "platform/forms.h"
#include "platform/memory/form_scripts.h"
#include "platform/memory/open_forms.h"

namespace quorvel {

// What the forms show and ask, on the terminal. The command at work plays the user of each form by a script;
// alerts become messages. A question is answered so that the command goes on (`yes`), or by whoever is at the
// terminal, or, with nobody there, so that it is cancelled.
class ConsoleForms : public Forms {
 public:
  struct World {
    Output& output;
    const Terminal& terminal;
    const Clock& clock;
    bool yes = false;
  };

  explicit ConsoleForms(const World& world);

  template <class F>
  void On(std::function<void(F&)> script) {
    scripts_.On<F>(std::move(script));
  }
  // The answer to the next InputBox.
  void AnswerInput(TextView text) { input_ = text; }
  // Shows no more messages.
  void Mute() { muted_ = true; }

  // Puts a question to the user as MsgBox does; whether to go on.
  bool Confirm(TextView title, TextView question);
  // The password that is typed; nothing, and unanswered, when nobody is there.
  [[nodiscard]] std::optional<Text> AskSecret(TextView prompt);

  // A question, a password's included, had nobody to answer it.
  [[nodiscard]] bool unanswered() const { return unanswered_; }
  // Ctrl-C pressed a cancel button.
  [[nodiscard]] bool cancelled() const { return cancelled_; }
  // Ctrl-C came while nothing could be cancelled: an exchange that is under way is to be given up. With the
  // progress window on show it takes a second Ctrl-C, because what was sent is not called back.
  [[nodiscard]] bool WantsToGiveUp();

  // Throws std::logic_error for a form without a script.
  void ShowModal(Form& form) override;
  void Show(Form& form) override;
  Answer MsgBox(TextView prompt, int style, TextView title) override;
  Text InputBox(TextView prompt, TextView title, TextView initial) override;
  void SetPointer(Pointer) override {}
  // Ctrl-C presses the progress window's cancel button. Throws Interrupted when there is no such window.
  void Yield() override;

 private:
  void Message(TextView title, TextView text);
  [[nodiscard]] std::optional<std::string> Ask(TextView title, TextView question, std::string_view prompt);
  void ObeyInterrupt();
  void ShowProgress();

  World world_;
  FormScripts scripts_;
  OpenForms open_;
  ProgressLine progress_line_;
  std::optional<Text> input_;
  bool muted_ = false;
  bool unanswered_ = false;
  bool cancelled_ = false;
  bool warned_ = false;  // that a send can no longer be cancelled
};

}  // namespace quorvel
