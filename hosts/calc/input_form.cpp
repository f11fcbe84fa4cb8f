#include "hosts/calc/input_form.h"

#include <algorithm>

namespace quorvel {

namespace {

constexpr int kLineHeight = 9;

int HeightOf(TextView prompt) {
  return kLineHeight * static_cast<int>(std::count(prompt.begin(), prompt.end(), u'\n') + 1);
}

}  // namespace

InputForm::InputForm(TextView prompt, TextView title, TextView initial)
    : InputForm(prompt, title, initial, HeightOf(prompt)) {}

InputForm::InputForm(TextView prompt, TextView title, TextView initial, int prompt_height)
    : Form("InputForm", title, 260, prompt_height + 66),
      lblPrompt(*this, "lblPrompt", {8, 8, 244, prompt_height}),
      txtAnswer(*this, "txtAnswer", {8, prompt_height + 16, 244, 16}),
      cmdOk(*this, "cmdOk", {134, prompt_height + 40, 56, 18}, u"OK", Button::Role::kDefault),
      cmdCancel(*this, "cmdCancel", {196, prompt_height + 40, 56, 18}, u"Cancel", Button::Role::kCancel) {
  lblPrompt.set_caption(Replace(prompt, u"&", u"&&"));
  txtAnswer.set_text(initial);
  cmdOk.on_click = [this] {
    answer_ = txtAnswer.text();
    Unload();
  };
  cmdCancel.on_click = [this] { Unload(); };
}

void InputForm::Form_Load() {
  txtAnswer.SetFocus();
  txtAnswer.SelectAll();
}

}  // namespace quorvel
