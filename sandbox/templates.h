#pragma once

#include <string>
#include <vector>

#include "sandbox/data.h"
#include "sandbox/form.h"

namespace quorvel::sandbox {

// All templates and sender IDs of `account`, as they are pulled. A Unicode template, and one that holds a
// marker of the reply's own format, travels as two hexadecimal digits a windows-1252 byte: what windows-1252
// lacks arrives as "?", because the format cannot carry it.
[[nodiscard]] std::string PullReply(const Account& account);

struct TemplateAnswer {
  std::string sentence;  // what the client shows
  bool changed = false;
};

// Adds a template to `templates`; a name that is taken is refused.
[[nodiscard]] TemplateAnswer SaveTemplate(const Form& form, std::vector<Template>& templates);

// Deletes the template of that name. A name arrives in windows-1252, so one that it cannot hold is found by
// what the client was answered or by its closest bytes, provided that only one template fits.
[[nodiscard]] TemplateAnswer DeleteTemplate(const Form& form, std::vector<Template>& templates);

}  // namespace quorvel::sandbox
