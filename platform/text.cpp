#include "platform/text.h"

#include <algorithm>
#include <cstdint>

namespace quorvel {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Beyond ASCII, every `step`-th unit from `first` to `last` is a small letter; its capital is `distance`
// units on.
struct SmallLetters {
  char16_t first;
  char16_t last;
  int step;
  int distance;
};

constexpr SmallLetters kSmallLetters[] = {
    {0x00E0, 0x00F6, 1, -32}, {0x00F8, 0x00FE, 1, -32}, {0x00FF, 0x00FF, 1, 121}, {0x0101, 0x012F, 2, -1},
    {0x0133, 0x0137, 2, -1},  {0x013A, 0x0148, 2, -1},  {0x014B, 0x0177, 2, -1},  {0x017A, 0x017E, 2, -1},
    {0x01A1, 0x01A5, 2, -1},  {0x01B0, 0x01B0, 1, -1},  {0x01F9, 0x021F, 2, -1},  {0x03AC, 0x03AC, 1, -38},
    {0x03AD, 0x03AF, 1, -37}, {0x03B1, 0x03C1, 1, -32}, {0x03C2, 0x03C2, 1, -31}, {0x03C3, 0x03CB, 1, -32},
    {0x03CC, 0x03CC, 1, -64}, {0x03CD, 0x03CE, 1, -63}, {0x0430, 0x044F, 1, -32}, {0x0450, 0x045F, 1, -80},
    {0x0461, 0x0481, 2, -1},  {0x048B, 0x04BF, 2, -1},  {0x04C2, 0x04CE, 2, -1},  {0x04CF, 0x04CF, 1, -15},
    {0x04D1, 0x052F, 2, -1},  {0x0561, 0x0586, 1, -48}, {0x1E01, 0x1E95, 2, -1},  {0x1EA1, 0x1EFF, 2, -1},
    {0xFF41, 0xFF5A, 1, -32},
};

char16_t UpperCase(char16_t unit) {
  if (unit < 0x80) return static_cast<char16_t>(unit >= u'a' && unit <= u'z' ? unit - (u'a' - u'A') : unit);
  const auto* const letters = std::ranges::lower_bound(kSmallLetters, unit, {}, &SmallLetters::last);
  if (letters == std::end(kSmallLetters) || unit < letters->first) return unit;
  if ((unit - letters->first) % letters->step != 0) return unit;
  return static_cast<char16_t>(unit + letters->distance);
}

constexpr bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Takes the first code point off `text`, which is not empty.
char32_t TakeCodePoint(TextView& text) {
  const char16_t unit = text.front();
  text.remove_prefix(1);
  if (IsLowSurrogate(unit)) return kReplacement;
  if (!IsHighSurrogate(unit)) return unit;
  if (text.empty() || !IsLowSurrogate(text.front())) return kReplacement;
  const char16_t low = text.front();
  text.remove_prefix(1);
  return 0x10000U + ((unit - 0xD800U) << 10U) + (low - 0xDC00U);
}

void AppendUtf8(std::string& bytes, char32_t code_point) {
  const auto append = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  const auto tail = [code_point](unsigned shift) { return 0x80U | ((code_point >> shift) & 0x3FU); };
  if (code_point < 0x80) {
    append(code_point);
  } else if (code_point < 0x800) {
    append(0xC0U | (code_point >> 6U));
    append(tail(0));
  } else if (code_point < 0x10000) {
    append(0xE0U | (code_point >> 12U));
    append(tail(6));
    append(tail(0));
  } else {
    append(0xF0U | (code_point >> 18U));
    append(tail(12));
    append(tail(6));
    append(tail(0));
  }
}

// The lead bytes from `first` to `last`, how many bytes follow them, and which values the first of those
// takes: the limits shut out overlong forms, surrogates and everything beyond U+10FFFF.
struct Lead {
  unsigned char first;
  unsigned char last;
  unsigned char following;
  unsigned char least;
  unsigned char most;
};

constexpr Lead kLeads[] = {
    {0x00, 0x7F, 0, 0x00, 0x00}, {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF}, {0xED, 0xED, 2, 0x80, 0x9F}, {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF}, {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

// Takes the first code point off `bytes`, which is not empty. A broken sequence is taken as far as it was
// right.
char32_t TakeCodePoint(std::string_view& bytes) {
  const auto take = [&bytes] {
    const auto byte = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    return byte;
  };
  const unsigned char first = take();
  const auto* const lead = std::ranges::lower_bound(kLeads, first, {}, &Lead::last);
  if (lead == std::end(kLeads) || first < lead->first) return kReplacement;
  if (lead->following == 0) return first;
  unsigned least = lead->least;
  unsigned most = lead->most;
  char32_t code_point = first & (0x3FU >> lead->following);
  for (int left = lead->following; left > 0; --left) {
    if (bytes.empty()) return kReplacement;
    const auto next = static_cast<unsigned char>(bytes.front());
    if (next < least || next > most) return kReplacement;
    code_point = (code_point << 6U) | (take() & 0x3FU);
    least = 0x80;
    most = 0xBF;
  }
  return code_point;
}

void AppendUtf16(Text& text, char32_t code_point) {
  if (code_point < 0x10000) {
    text.push_back(static_cast<char16_t>(code_point));
    return;
  }
  const char32_t offset = code_point - 0x10000;
  text.push_back(static_cast<char16_t>(0xD800U + (offset >> 10U)));
  text.push_back(static_cast<char16_t>(0xDC00U + (offset & 0x3FFU)));
}

}  // namespace

TextView Trim(TextView text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::vector<Text> Split(TextView text, TextView delimiter) {
  std::vector<Text> parts;
  if (text.empty()) return parts;
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = text.find(delimiter, begin)) != TextView::npos;
       begin = end + delimiter.size()) {
    parts.emplace_back(text.substr(begin, end - begin));
  }
  parts.emplace_back(text.substr(begin));
  return parts;
}

Text Replace(TextView text, TextView find, TextView replacement) {
  if (find.empty()) return Text(text);
  Text result;
  result.reserve(text.size() + replacement.size());
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = text.find(find, begin)) != TextView::npos; begin = end + find.size()) {
    result.append(text, begin, end - begin).append(replacement);
  }
  return result.append(text, begin);
}

Text Remove(TextView text, TextView units) {
  Text result;
  result.reserve(text.size());
  std::ranges::remove_copy_if(text, std::back_inserter(result),
                              [units](char16_t unit) { return units.find(unit) != TextView::npos; });
  return result;
}

Text UpperCase(TextView text) {
  Text result(text);
  for (char16_t& unit : result) unit = UpperCase(unit);
  return result;
}

std::string ToUtf8(TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) AppendUtf8(bytes, TakeCodePoint(text));
  return bytes;
}

Text FromUtf8(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (!bytes.empty()) AppendUtf16(text, TakeCodePoint(bytes));
  return text;
}

}  // namespace quorvel
