#include "platform/memory/open_forms.h"

namespace quorvel {

class OpenForms::View : public FormView {
 public:
  View(OpenForms& open, Form& form) : open_(open), form_(form) {}

  void ControlChanged(const Control&, Property) override {}
  void FocusMoved(const Control&) override {}
  void Closed() override { open_.views_.erase(&form_); }  // ends this object

 private:
  OpenForms& open_;
  Form& form_;
};

OpenForms::OpenForms() = default;

OpenForms::~OpenForms() {
  for (const auto& [form, view] : views_) form->AttachView(nullptr);
}

void OpenForms::Add(Form& form) {
  if (!form.loaded() || views_.contains(&form)) return;
  form.AttachView(views_.emplace(&form, std::make_unique<View>(*this, form)).first->second.get());
}

}  // namespace quorvel
