#pragma once

#include <string>
#include <string_view>

#include "account/context.h"
#include "send/composition.h"
#include "send/send_choices.h"
#include "send/send_rules.h"

namespace quorvel {

// One job as it goes over the wire.
struct Submission {
  std::string_view path;
  std::string body;
};

// The request for a composed job, whose texts it uses up. Throws RuntimeError 5 when the password cannot be
// scrambled.
[[nodiscard]] Submission BuildSubmission(Gateway& gateway, const SendChoices& choices, Layout layout,
                                         Composition& composition);

// Posts a composed job, once, and shows what the gateway answers.
[[nodiscard]] SendOutcome Submit(const AddInContext& context, const SendChoices& choices,
                                 const SendRules& rules, Composition& composition);

}  // namespace quorvel
