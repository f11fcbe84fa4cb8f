#include "hosts/console/text_file.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <system_error>

namespace quorvel {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

// The line on which the unit after `text` stands.
std::size_t LineAfter(TextView text) {
  std::size_t line = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool cr_of_crlf = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (text[i] == u'\n' || (text[i] == u'\r' && !cr_of_crlf)) ++line;
  }
  return line;
}

void AppendCodePoint(Text& text, std::uint32_t code_point) {
  constexpr std::uint32_t kFirstBeyondUnits = 0x10000;
  if (code_point < kFirstBeyondUnits) {
    text.push_back(static_cast<char16_t>(code_point));
    return;
  }
  const std::uint32_t offset = code_point - kFirstBeyondUnits;
  text.push_back(static_cast<char16_t>(0xD800 + (offset >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
}

struct SequenceForm {
  std::uint32_t lead_mask;
  std::uint32_t lead_bits;
  std::size_t length;
  std::uint32_t least;  // a smaller code point has a shorter form
};

constexpr SequenceForm kSequenceForms[] = {
    {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

// Takes one sequence of two to four bytes off the front of `bytes`; false when it is none.
bool TakeSequence(std::string_view& bytes, Text& text) {
  const auto byte = [&](std::size_t i) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
  };
  for (const SequenceForm& form : kSequenceForms) {
    if ((byte(0) & form.lead_mask) != form.lead_bits) continue;
    if (bytes.size() < form.length) return false;
    std::uint32_t code_point = byte(0) & ~form.lead_mask & 0xFF;
    for (std::size_t i = 1; i < form.length; ++i) {
      if ((byte(i) & 0xC0) != 0x80) return false;
      code_point = code_point << 6 | (byte(i) & 0x3F);
    }
    const bool surrogate = code_point >= 0xD800 && code_point <= 0xDFFF;
    if (code_point < form.least || code_point > 0x10FFFF || surrogate) return false;
    AppendCodePoint(text, code_point);
    bytes.remove_prefix(form.length);
    return true;
  }
  return false;
}

std::variant<Text, DecodeFault> DecodeUtf8(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const auto byte = static_cast<unsigned char>(bytes.front());
    if (byte < 0x80) {
      text.push_back(byte);
      bytes.remove_prefix(1);
    } else if (!TakeSequence(bytes, text)) {
      return DecodeFault{LineAfter(text), "not valid UTF-8"};
    }
  }
  return text;
}

bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::variant<Text, DecodeFault> DecodeUtf16(std::string_view bytes, bool big_endian) {
  Text text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto high = static_cast<unsigned char>(bytes[big_endian ? i : i + 1]);
    const auto low = static_cast<unsigned char>(bytes[big_endian ? i + 1 : i]);
    text.push_back(static_cast<char16_t>(high << 8 | low));
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]);
    const bool alone = !pair && (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i]));
    if (alone) return DecodeFault{LineAfter(TextView(text).substr(0, i)), "not valid UTF-16"};
    if (pair) ++i;
  }
  if (bytes.size() % 2 != 0)
    return DecodeFault{LineAfter(text), "not valid UTF-16: half a character at the end"};
  return text;
}

}  // namespace

std::variant<Text, DecodeFault> DecodeText(std::string_view bytes) {
  if (bytes.starts_with(kUtf16LittleMark)) return DecodeUtf16(bytes.substr(kUtf16LittleMark.size()), false);
  if (bytes.starts_with(kUtf16BigMark)) return DecodeUtf16(bytes.substr(kUtf16BigMark.size()), true);
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return DecodeUtf8(bytes);
}

std::variant<std::string, std::error_code> ReadFile(const std::filesystem::path& file) {
  const auto failure = [] { return std::error_code(errno, std::generic_category()); };
  struct Close {
    void operator()(std::FILE* stream) const { (void)std::fclose(stream); }
  };
  const std::unique_ptr<std::FILE, Close> stream(std::fopen(file.c_str(), "rbe"));
  if (stream == nullptr) return failure();
  constexpr std::size_t kBlock = 1 << 20;
  std::string bytes;
  for (;;) {
    const std::size_t size = bytes.size();
    bytes.resize(size + kBlock);
    const std::size_t read = std::fread(bytes.data() + size, 1, kBlock, stream.get());
    bytes.resize(size + read);
    if (read == kBlock) continue;
    if (std::ferror(stream.get()) != 0) return failure();
    return bytes;
  }
}

}  // namespace quorvel
