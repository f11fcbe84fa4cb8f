#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "sandbox/data.h"
#include "sandbox/form.h"

namespace quorvel::sandbox {

struct Refusal {
  std::string reason;  // for the log; names no password and no message text
};

// The bulk submission in `form` as a job of merged messages, due `now` or, when `scheduled`, as many minutes
// later as it says. Account, path, identity and raw request are the caller's to fill in.
[[nodiscard]] std::variant<Job, Refusal> ReadSubmission(const Form& form, bool scheduled, LocalTime now);

// What `messages` cost, in SMS.
[[nodiscard]] std::int64_t Cost(const std::vector<Message>& messages, bool unicode);

}  // namespace quorvel::sandbox
