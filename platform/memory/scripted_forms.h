#pragma once

#include <deque>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "platform/forms.h"
#include "platform/memory/form_scripts.h"
#include "platform/memory/open_forms.h"

namespace quorvel {

// A window system whose user is a table: what to do with each modal form, and the answers to the host's own
// boxes in the order in which they are asked. Whatever the table does not foresee is std::logic_error: a
// modal form without a script or that its script leaves open, a question without an answer, an answer that
// the question does not offer.
class ScriptedForms : public Forms {
 public:
  // A call of MsgBox or InputBox; a box with an OK button only is recorded too, and answers itself.
  struct Question {
    Text prompt;
    int style = 0;  // MsgBox
    Text title;
    Text initial;  // InputBox

    friend bool operator==(const Question&, const Question&) = default;
  };

  template <class F>
  void On(std::function<void(F&)> script) {
    scripts_.On<F>(std::move(script));
  }
  void AnswerNext(Answer answer) { answers_.emplace_back(answer); }
  void AnswerNext(TextView text) { answers_.emplace_back(Text(text)); }
  // Runs at every Yield.
  void OnYield(std::function<void()> hook) { on_yield_ = std::move(hook); }

  // The form of that type that is shown modeless; null when there is none.
  template <class F>
  [[nodiscard]] F* Open() const {
    return open_.Find<F>();
  }

  [[nodiscard]] const std::vector<Question>& questions() const { return questions_; }
  // The names of the forms that were shown, modal and modeless, in order.
  [[nodiscard]] const std::vector<std::string>& shown() const { return shown_; }
  [[nodiscard]] const std::vector<Pointer>& pointers() const { return pointers_; }
  [[nodiscard]] int yields() const { return yields_; }

  void Show(Form& form) override;
  void ShowModal(Form& form) override;
  Answer MsgBox(TextView prompt, int style, TextView title) override;
  Text InputBox(TextView prompt, TextView title, TextView initial) override;
  void SetPointer(Pointer pointer) override { pointers_.push_back(pointer); }
  void Yield() override;

 private:
  template <class A>
  A TakeAnswer(TextView prompt);

  FormScripts scripts_;
  OpenForms open_;
  std::deque<std::variant<Answer, Text>> answers_;
  std::function<void()> on_yield_;
  std::vector<Question> questions_;
  std::vector<std::string> shown_;
  std::vector<Pointer> pointers_;
  int yields_ = 0;
};

}  // namespace quorvel
