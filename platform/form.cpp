#include "platform/form.h"

#include <algorithm>

namespace quorvel {

Form::Form(std::string_view name, TextView caption, int width, int height)
    : name_(name), caption_(caption), width_(width), height_(height) {}

Form::~Form() {
  if (view_ != nullptr) view_->Closed();
}

Control* Form::Find(std::string_view name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const Control* control) { return control->name() == name; });
  return found == controls_.end() ? nullptr : *found;
}

void Form::Load() {
  if (state_ != State::kDesign) return;
  state_ = State::kLoaded;
  Form_Load();
}

void Form::Unload() {
  if (state_ == State::kUnloaded) return;
  state_ = State::kUnloaded;
  FormView* const view = view_;
  view_ = nullptr;
  if (view != nullptr) view->Closed();
}

void Form::UserClose() {
  if (loaded() && Form_QueryUnload()) Unload();
}

}  // namespace quorvel
