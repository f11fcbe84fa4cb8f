#include "hosts/calc/input_form.h"

namespace quorvel {

InputForm::InputForm(TextView prompt, TextView title, TextView initial)
    : Form("InputForm", title, 260, 140) {
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
