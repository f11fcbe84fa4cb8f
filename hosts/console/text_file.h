#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>

#include "platform/text.h"

namespace quorvel {

// Bytes that are no text: where they begin, counted in lines from 1, and why.
struct DecodeFault {
  std::size_t line = 0;
  std::string reason;
};

// UTF-8 with or without a byte order mark, or UTF-16 of either byte order with one. The mark is no part of
// the text.
[[nodiscard]] std::variant<Text, DecodeFault> DecodeText(std::string_view bytes);

// The file's bytes, or std::error_code with the system's reason.
[[nodiscard]] std::variant<std::string, std::error_code> ReadFile(const std::filesystem::path& file);

}  // namespace quorvel
