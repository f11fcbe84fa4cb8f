#include "hosts/excel/input_form.h"

namespace quorvel {

InputForm::InputForm(TextView prompt, TextView title, TextView initial) : Form("InputForm", title, 270, 88) {
  prompt_.set_caption(Replace(prompt, u"&", u"&&"));  // no access keys in it
  input_.set_text(initial);
  input_.SetFocus();
  ok_.on_click = [this] {
    answer_ = input_.text();
    Unload();
  };
  cancel_.on_click = [this] { Unload(); };
}

}  // namespace quorvel
