#include "sandbox/wire_text.h"

#include <charconv>

#include "platform/code_page.h"

namespace quorvel::sandbox {
namespace {

constexpr std::size_t kDigitsPerUnit = 4;
constexpr std::string_view kDigits = "0123456789ABCDEF";

}  // namespace

Text FromWire(std::string_view bytes) {
  return Windows1252().Decode(bytes);
}

std::string ToWire(TextView text) {
  std::string bytes = Windows1252().Encode(text);
  const Text back = Windows1252().Decode(bytes);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (back[i] != text[i]) bytes[i] = '?';
  }
  return bytes;
}

std::optional<Text> FromHexText(std::string_view digits) {
  if (digits.size() % kDigitsPerUnit != 0) return std::nullopt;
  Text text;
  text.reserve(digits.size() / kDigitsPerUnit);
  for (const char* at = digits.data(); at != digits.data() + digits.size(); at += kDigitsPerUnit) {
    unsigned short unit = 0;
    const auto [stop, error] = std::from_chars(at, at + kDigitsPerUnit, unit, 16);
    if (error != std::errc() || stop != at + kDigitsPerUnit) return std::nullopt;
    text.push_back(static_cast<char16_t>(unit));
  }
  return text;
}

std::string ToByteHex(std::string_view bytes) {
  std::string hex;
  hex.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    hex.push_back(kDigits[byte >> 4U]);
    hex.push_back(kDigits[byte & 15U]);
  }
  return hex;
}

}  // namespace quorvel::sandbox
