#pragma once

#include <functional>
#include <map>
#include <typeindex>

#include "platform/form.h"

namespace quorvel {

// What a user who is played by code does with each form, by the form's dynamic type.
class FormScripts {
 public:
  // The script of every showing of a `F`, in place of the one before. It plays the user on the form's
  // controls and has to bring the form to its end.
  template <class F>
  void On(std::function<void(F&)> script) {
    scripts_.insert_or_assign(typeid(F),
                              [script = std::move(script)](Form& form) { script(static_cast<F&>(form)); });
  }

  // Loads the form and plays its script. Throws std::logic_error, naming the form, when it has no script or
  // its script left it open. A form that unloads itself while it loads needs none.
  void Play(Form& form) const;

 private:
  std::map<std::type_index, std::function<void(Form&)>> scripts_;
};

}  // namespace quorvel
