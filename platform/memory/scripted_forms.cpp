#include "platform/memory/scripted_forms.h"

#include <algorithm>
#include <stdexcept>

namespace quorvel {

namespace {

constexpr int kButtonsMask = 7;

bool Offers(int style, Answer answer) {
  switch (style & kButtonsMask) {
    case kOkOnly:
      return answer == Answer::kOk;
    case kOkCancel:
      return answer == Answer::kOk || answer == Answer::kCancel;
    case kYesNo:
      return answer == Answer::kYes || answer == Answer::kNo;
    default:
      return false;
  }
}

}  // namespace

void ScriptedForms::Show(Form& form) {
  shown_.emplace_back(form.name());
  form.Load();
  open_.Add(form);
}

void ScriptedForms::ShowModal(Form& form) {
  shown_.emplace_back(form.name());
  scripts_.Play(form);
}

template <class A>
A ScriptedForms::TakeAnswer(TextView prompt) {
  if (answers_.empty()) throw std::logic_error("no answer for: " + ToUtf8(prompt));
  const auto* const answer = std::get_if<A>(&answers_.front());
  if (answer == nullptr) throw std::logic_error("an answer of the wrong kind for: " + ToUtf8(prompt));
  A taken = *answer;
  answers_.pop_front();
  return taken;
}

Answer ScriptedForms::MsgBox(TextView prompt, int style, TextView title) {
  questions_.push_back({.prompt = Text(prompt), .style = style, .title = Text(title), .initial = {}});
  if ((style & kButtonsMask) == kOkOnly) return Answer::kOk;
  const auto answer = TakeAnswer<Answer>(prompt);
  if (!Offers(style, answer)) throw std::logic_error("not offered by: " + ToUtf8(prompt));
  return answer;
}

Text ScriptedForms::InputBox(TextView prompt, TextView title, TextView initial) {
  questions_.push_back({.prompt = Text(prompt), .style = 0, .title = Text(title), .initial = Text(initial)});
  return TakeAnswer<Text>(prompt);
}

void ScriptedForms::Yield() {
  ++yields_;
  if (on_yield_) on_yield_();
}

}  // namespace quorvel
