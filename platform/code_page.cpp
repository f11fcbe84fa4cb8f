#include "platform/code_page.h"

#include <algorithm>
#include <array>

namespace quorvel {
namespace {

struct Mapping {
  char16_t unit;
  unsigned char byte;
};

constexpr Mapping kBestFit[] = {
#include "platform/code_page_1252.inc"
};

// The units of bytes 0x80 to 0x9F; every other byte is the unit of the same number.
constexpr std::array<char16_t, 32> kUnits = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::size_t kFirstOther = 0x80;  // the first byte that kUnits gives
constexpr std::size_t kLastOther = 0x9F;

// The byte of every unit: one look-up, whatever the script.
constexpr std::array<char, 0x10000> MakeBytes() {
  std::array<char, 0x10000> bytes{};
  bytes.fill('?');
  for (std::size_t byte = 0; byte <= 0xFF; ++byte) {
    if (byte < kFirstOther || byte > kLastOther) bytes[byte] = static_cast<char>(byte);
  }
  for (const Mapping& mapping : kBestFit) bytes[mapping.unit] = static_cast<char>(mapping.byte);
  return bytes;
}

constexpr std::array<char, 0x10000> kBytes = MakeBytes();

class CodePage1252 final : public CodePage {
 public:
  std::string Encode(TextView text) const override {
    std::string bytes(text.size(), '\0');
    std::ranges::transform(text, bytes.begin(), [](char16_t unit) { return kBytes[unit]; });
    return bytes;
  }

  Text Decode(std::string_view bytes) const override {
    Text text(bytes.size(), u'\0');
    std::ranges::transform(bytes, text.begin(), [](char byte) {
      const auto number = static_cast<unsigned char>(byte);
      const bool is_other = number >= kFirstOther && number <= kLastOther;
      return is_other ? kUnits[number - kFirstOther] : static_cast<char16_t>(number);
    });
    return text;
  }
};

}  // namespace

const CodePage& Windows1252() {
  static const CodePage1252 code_page;
  return code_page;
}

}  // namespace quorvel
