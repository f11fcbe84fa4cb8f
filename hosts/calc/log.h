#pragma once

#include <string_view>

namespace quorvel {

// Appends a line to the file that the environment variable QUORVEL_LOG names; nothing without it. For finding
// out why the add-in does not work: callers never hand it what the user typed, a cell's content, a request or
// an answer. Never fails; `what` is UTF-8.
void Log(std::string_view where, std::string_view what) noexcept;

}  // namespace quorvel
