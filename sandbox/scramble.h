#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvel::sandbox {

// The password behind its scrambled form, byte by byte; nothing when `scrambled` cannot be undone.
//
// The last byte is a position (from 1) in the bytes before it; the byte there is the key. Without those two,
// byte i of L (from 1) is the password's byte plus the key plus L - i. The single byte 1 is the empty
// password.
[[nodiscard]] std::optional<std::string> UndoScramble(std::string_view scrambled);

}  // namespace quorvel::sandbox
