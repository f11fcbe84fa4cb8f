#include "gateway/url_encode.h"

namespace quorvel {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool IsCopied(unsigned char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

}  // namespace

std::string UrlEncodeBytes(std::string_view bytes) {
  std::string encoded;
  encoded.reserve(bytes.size() + bytes.size() / 2);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsCopied(byte)) {
      encoded.push_back(c);
    } else if (c == ' ') {
      encoded.push_back('+');
    } else {
      encoded.push_back('%');
      encoded.push_back(kHexDigits[byte >> 4]);
      encoded.push_back(kHexDigits[byte & 0xF]);
    }
  }
  return encoded;
}

}  // namespace quorvel
