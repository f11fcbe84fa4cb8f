#pragma once

#include <string>
#include <vector>

#include "sandbox/data.h"
#include "sandbox/gateway.h"

namespace quorvel::sandbox {

// What was received, as JSON: {"messages": [...], "requests": [...]}. A message names its raw request by its
// index in "requests". Moments are local; a request's body has a character U+0000 to U+00FF a byte.
[[nodiscard]] std::string ReceivedJson(const std::vector<Job>& jobs,
                                       const std::vector<RecordedRequest>& requests);

}  // namespace quorvel::sandbox
