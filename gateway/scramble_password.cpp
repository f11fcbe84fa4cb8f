#include "gateway/scramble_password.h"

#include <cstddef>
#include <string>

#include "platform/runtime_error.h"

namespace quorvel {

namespace {

// The digit sum of year + month + day + hour + minute + second.
int Key(Date now) {
  const DateParts parts = Parts(now);
  int n = parts.year + parts.month + parts.day + parts.hour + parts.minute + parts.second;
  int key = 0;
  for (; n > 0; n /= 10) key += n % 10;
  return key;
}

char CharacterOfCode(std::size_t code) {
  if (code > 255) throw InvalidCall();
  return static_cast<char>(static_cast<unsigned char>(code));
}

}  // namespace

Text ScramblePassword(TextView password, Date now, Rnd& rnd, const CodePage& code_page) {
  const auto key = static_cast<std::size_t>(Key(now));
  std::string scrambled = code_page.Encode(password);
  const std::size_t length = scrambled.size();
  for (std::size_t i = 0; i < length; ++i) {
    const auto code = static_cast<unsigned char>(scrambled[i]);
    scrambled[i] = CharacterOfCode(code + key + (length - (i + 1)));
  }
  const auto place =
      static_cast<std::size_t>(static_cast<double>(rnd.Next()) * static_cast<double>(length)) + 1;
  if (length > 0) scrambled.insert(place - 1, 1, CharacterOfCode(key));
  scrambled.push_back(CharacterOfCode(place));
  return code_page.Decode(scrambled);
}

}  // namespace quorvel
