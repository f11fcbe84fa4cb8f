#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel::sandbox {

// The wall clock of the gateway's own place, to the second.
using LocalTime = std::chrono::local_seconds;

[[nodiscard]] LocalTime SystemLocalTime();

// "2024-01-31T09:05:00".
[[nodiscard]] std::string ToIso(LocalTime time);
// Reads what ToIso writes; nothing for any other text or a moment that does not exist.
[[nodiscard]] std::optional<LocalTime> FromIso(std::string_view text);

// Reads a day written "yyyymmdd"; nothing for any other text or a day that does not exist.
[[nodiscard]] std::optional<std::chrono::local_days> FromCompactDay(std::string_view text);

}  // namespace quorvel::sandbox
