#include "sandbox/scramble.h"

namespace quorvel::sandbox {

std::optional<std::string> UndoScramble(std::string_view scrambled) {
  if (scrambled == "\x01") return std::string();
  // Key and position together with one byte of password at least.
  if (scrambled.size() < 3) return std::nullopt;
  const std::size_t length = scrambled.size() - 2;
  const auto position = static_cast<unsigned char>(scrambled.back());
  if (position < 1 || position > length) return std::nullopt;
  const auto key = static_cast<unsigned char>(scrambled[position - 1U]);

  std::string password(scrambled.substr(0, length + 1));
  password.erase(position - 1U, 1);
  for (std::size_t i = 0; i < length; ++i) {
    const std::size_t shift = key + (length - 1 - i);
    const auto byte = static_cast<unsigned char>(password[i]);
    if (byte < shift) return std::nullopt;
    password[i] = static_cast<char>(byte - shift);
  }
  return password;
}

}  // namespace quorvel::sandbox
