#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sandbox/data.h"

namespace quorvel::sandbox {

// The user's jobs with messages that are not due yet, as an envelope of records id, title, next due moment
// and number of waiting messages; "0" when there is none.
[[nodiscard]] std::string ScheduledReply(const std::vector<Job>& jobs, TextView user, LocalTime now);

// "3,7" as the user's jobs of those ids; nothing when one of them is unknown or has no message waiting.
[[nodiscard]] std::optional<std::vector<Job*>> FindWaiting(std::vector<Job>& jobs, std::string_view ids,
                                                           TextView user, LocalTime now);

// Drops the messages of `job` that are not due yet. The result is what they cost, in SMS.
[[nodiscard]] std::int64_t CancelWaiting(Job& job, LocalTime now);

// Makes the messages of `job` that are not due yet due at `due`.
void RetimeWaiting(Job& job, LocalTime now, LocalTime due);

}  // namespace quorvel::sandbox
