#include "gateway/url_encode.h"

#include <algorithm>
#include <array>

namespace quorvel {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

constexpr std::array<bool, 256> MakeEscaped() {
  std::array<bool, 256> escaped{};
  for (std::size_t byte = 0; byte < escaped.size(); ++byte) {
    const bool is_copied =
        (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    escaped[byte] = !is_copied && byte != ' ';
  }
  return escaped;
}

constexpr std::array<bool, 256> kEscaped = MakeEscaped();

bool IsEscaped(char c) {
  return kEscaped[static_cast<unsigned char>(c)];
}

}  // namespace

std::string UrlEncodeBytes(std::string_view bytes) {
  const auto escapes = static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), IsEscaped));
  std::string encoded(bytes.size() + 2 * escapes, '+');
  auto out = encoded.begin();
  for (const char c : bytes) {
    if (IsEscaped(c)) {
      const auto byte = static_cast<unsigned char>(c);
      *out++ = '%';
      *out++ = kHexDigits[byte >> 4];
      *out++ = kHexDigits[byte & 0xF];
    } else {
      *out++ = c == ' ' ? '+' : c;
    }
  }
  return encoded;
}

}  // namespace quorvel
