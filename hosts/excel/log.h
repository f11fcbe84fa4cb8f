#pragma once

#include <string_view>

namespace quorvel {

// Writes one line to the add-in's log, %LOCALAPPDATA%\Quorvel\Quorvel.log, and to a debugger that listens.
// The log is for finding out why the add-in does not work: versions, choices made at start-up, failures.
// Callers never hand it what the user typed, a cell's content, a request or an answer. Never fails; `what` is
// UTF-8.
void Log(std::string_view where, std::string_view what) noexcept;

}  // namespace quorvel
