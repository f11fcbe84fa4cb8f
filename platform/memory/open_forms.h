#pragma once

#include <map>
#include <memory>

#include "platform/form.h"

namespace quorvel {

// The forms that are shown beside the caller. A form leaves by being unloaded or destroyed.
class OpenForms {
 public:
  OpenForms();
  OpenForms(const OpenForms&) = delete;
  OpenForms& operator=(const OpenForms&) = delete;
  // Takes its views off the forms that are still open.
  ~OpenForms();

  // `form` is loaded. Showing it again changes nothing.
  void Add(Form& form);
  // The open form of that type; null when there is none.
  template <class F>
  [[nodiscard]] F* Find() const {
    for (const auto& [form, view] : views_) {
      if (auto* const found = dynamic_cast<F*>(form)) return found;
    }
    return nullptr;
  }

 private:
  class View;

  std::map<Form*, std::unique_ptr<View>> views_;
};

}  // namespace quorvel
