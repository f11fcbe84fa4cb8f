#include "platform/memory/form_scripts.h"

#include <stdexcept>
#include <string>
#include <typeinfo>

namespace quorvel {

void FormScripts::Play(Form& form) const {
  form.Load();
  if (!form.loaded()) return;
  const auto found = scripts_.find(typeid(form));
  if (found == scripts_.end()) throw std::logic_error("no script for " + std::string(form.name()));
  const auto script = found->second;  // a script may replace itself
  script(form);
  if (form.loaded()) throw std::logic_error("its script left open " + std::string(form.name()));
}

}  // namespace quorvel
