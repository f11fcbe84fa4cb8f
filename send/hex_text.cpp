#include "send/hex_text.h"

#include "addin/common/alert.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr TextView kHexDigits = u"0123456789ABCDEF";
constexpr std::size_t kDigits = 4;

// Positions in a text are 16-bit numbers here. Throws Overflow for a longer text.
void CheckLength(TextView text) {
  static_cast<void>(ToInteger(static_cast<double>(text.size())));
}

void AppendHex(Text& hex, char16_t unit) {
  for (int shift = 12; shift >= 0; shift -= 4) hex.push_back(kHexDigits[(unit >> shift) & 0xF]);
}

}  // namespace

bool IsUnicode(Forms& forms, TextView text) {
  try {
    CheckLength(text);
    for (const char16_t unit : text) {
      if (static_cast<std::int16_t>(unit) > 255) return true;
    }
  } catch (const RuntimeError&) {
    ShowAlert(forms, u"Error Finding Unicode.", kCritical, u"S M S");
  }
  return false;
}

Text conStringToHex(TextView text) {
  try {
    CheckLength(text);
    if (Trim(text).empty()) text = u" ";
    Text hex;
    hex.reserve(text.size() * kDigits);
    for (const char16_t unit : text) AppendHex(hex, unit);
    return hex;
  } catch (const RuntimeError& error) {
    return u"Error In StringToHex Function : " + error.description();
  }
}

Text conHexToString(TextView text) {
  return conStringToHex(text);
}

Text GetStringFromHex(TextView hex, const CodePage& code_page) {
  std::string bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const std::int16_t code = ToInteger(u"&H" + Text(hex.substr(i, 2)));
    bytes.push_back(static_cast<char>(static_cast<unsigned char>(code)));
  }
  return code_page.Decode(bytes);
}

}  // namespace quorvel
