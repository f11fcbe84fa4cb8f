#include "sandbox/form.h"

#include <algorithm>
#include <charconv>

#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

std::optional<char> EscapedByte(std::string_view digits) {
  unsigned char byte = 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
  if (digits.size() != 2 || error != std::errc() || stop != digits.data() + 2) return std::nullopt;
  return static_cast<char>(byte);
}

std::string Decode(std::string_view encoded, char plus) {
  std::string bytes;
  bytes.reserve(encoded.size());
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    char c = encoded[i];
    if (c == '+') {
      c = plus;
    } else if (c == '%') {
      if (const auto byte = EscapedByte(encoded.substr(i + 1, 2))) {
        c = *byte;
        i += 2;
      }
    }
    bytes.push_back(c);
  }
  return bytes;
}

}  // namespace

std::string FormDecode(std::string_view encoded) {
  return Decode(encoded, ' ');
}
std::string PercentDecode(std::string_view encoded) {
  return Decode(encoded, '+');
}

Form::Form(std::string_view body) {
  while (!body.empty()) {
    const std::string_view parameter = body.substr(0, body.find('&'));
    body.remove_prefix(std::min(parameter.size() + 1, body.size()));
    const std::string_view name = parameter.substr(0, parameter.find('='));
    parameters_.emplace_back(name, parameter.substr(std::min(name.size() + 1, parameter.size())));
  }
}

std::optional<std::string_view> Form::Raw(std::string_view name) const {
  const auto found = std::ranges::find(parameters_, name, &decltype(parameters_)::value_type::first);
  if (found == parameters_.end()) return std::nullopt;
  return found->second;
}

std::optional<std::string> Form::Bytes(std::string_view name) const {
  const auto raw = Raw(name);
  if (!raw) return std::nullopt;
  return FormDecode(*raw);
}

std::optional<Text> Form::Value(std::string_view name) const {
  const auto bytes = Bytes(name);
  if (!bytes) return std::nullopt;
  return FromWire(*bytes);
}

}  // namespace quorvel::sandbox
