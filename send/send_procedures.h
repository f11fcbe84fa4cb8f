#pragma once

#include "account/context.h"
#include "preview/preview_state.h"
#include "send/send_choices.h"

namespace quorvel {

// The bulk sends: each walks the chosen rows of the active sheet and hands the gateway one job, in one
// request. What the user has to know is shown; what the host or the sheet fails at is thrown as RuntimeError,
// and then nothing was posted.

// Plain text.
[[nodiscard]] SendResult SendSMS(const AddInContext& context, PreviewState& preview,
                                 const SendChoices& choices);

// Text beyond the code page, as hex. Goes out at once: the gateway does not schedule it.
[[nodiscard]] SendResult SendSMS_Unicode(const AddInContext& context, PreviewState& preview,
                                         const SendChoices& choices);

// Plain text to those of the chosen rows that satisfy a filter formula.
[[nodiscard]] SendResult SendFilterSMS(const AddInContext& context, PreviewState& preview,
                                       const SendChoices& choices, TextView formula);

}  // namespace quorvel
