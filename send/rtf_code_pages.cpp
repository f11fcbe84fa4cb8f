#include "send/rtf_code_pages.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

#include "platform/code_page.h"

namespace quorvel {

namespace {

constexpr char16_t kMissing = u'\uFFFD';
constexpr unsigned char kFirstLead = 0x81;
constexpr unsigned char kFirstTrail = 0x40;
constexpr unsigned char kFirstKana = 0xA1;  // single bytes of the Japanese one
constexpr unsigned char kLastKana = 0xDF;
constexpr char16_t kHalfwidthKana = u'\uFF61';
constexpr int kJapanese = 932;
constexpr int kSimplifiedChinese = 936;

struct CharsetPage {
  int charset;
  int code_page;
};

constexpr CharsetPage kCharsets[] = {
    {0, 1252},   {2, 1252},   {128, kJapanese}, {129, 949},  {134, kSimplifiedChinese},
    {136, 950},  {161, 1253}, {162, 1254},      {163, 1258}, {177, 1255},
    {178, 1256}, {186, 1257}, {204, 1251},      {222, 874},  {238, 1250},
};

struct SingleBytePage {
  int code_page;
  std::array<char16_t, 128> upper_half;
};

constexpr SingleBytePage kSingleBytePages[] = {
#include "send/code_pages/single_byte.inc"
};

constexpr TextView kRows932[] = {
#include "send/code_pages/cp932.inc"
};
constexpr TextView kRows936[] = {
#include "send/code_pages/cp936.inc"
};
constexpr TextView kRows949[] = {
#include "send/code_pages/cp949.inc"
};
constexpr TextView kRows950[] = {
#include "send/code_pages/cp950.inc"
};

struct DoubleBytePage {
  int code_page;
  std::span<const TextView> rows;  // by lead byte from kFirstLead
};

constexpr DoubleBytePage kDoubleBytePages[] = {
    {kJapanese, kRows932}, {kSimplifiedChinese, kRows936}, {949, kRows949}, {950, kRows950}};

// The table's row of that code page; null when it has none.
template <class Table>
const auto* Find(const Table& table, int code_page) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [&](const auto& row) { return row.code_page == code_page; });
  return found == std::end(table) ? nullptr : &*found;
}

// The single bytes from 0x80 on of the double-byte code pages.
char16_t DecodeLoneByte(int code_page, unsigned char byte) {
  if (code_page == kJapanese && byte >= kFirstKana && byte <= kLastKana) {
    return static_cast<char16_t>(kHalfwidthKana + (byte - kFirstKana));
  }
  if (byte == 0x80) return code_page == kSimplifiedChinese ? u'\u20AC' : char16_t{0x80};
  return kMissing;
}

}  // namespace

std::optional<int> CodePageOfCharset(int charset) {
  const auto* const found = std::find_if(std::begin(kCharsets), std::end(kCharsets),
                                         [&](const CharsetPage& row) { return row.charset == charset; });
  if (found == std::end(kCharsets)) return std::nullopt;
  return found->code_page;
}

bool IsLeadByte(int code_page, unsigned char byte) {
  if (Find(kDoubleBytePages, code_page) == nullptr) return false;
  if (code_page != kJapanese) return byte >= kFirstLead && byte <= 0xFE;
  return (byte >= kFirstLead && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

char16_t DecodeByte(int code_page, unsigned char byte) {
  if (byte < 0x80) return byte;
  if (const auto* const page = Find(kSingleBytePages, code_page)) return page->upper_half[byte - 0x80U];
  if (Find(kDoubleBytePages, code_page) != nullptr) return DecodeLoneByte(code_page, byte);
  return Windows1252().Decode(std::string(1, static_cast<char>(byte))).front();
}

char16_t DecodePair(int code_page, unsigned char lead, unsigned char trail) {
  const auto* const page = Find(kDoubleBytePages, code_page);
  if (page == nullptr || lead < kFirstLead || trail < kFirstTrail) return kMissing;
  const std::size_t row = lead - kFirstLead;
  const std::size_t column = trail - kFirstTrail;
  if (row >= page->rows.size() || column >= page->rows[row].size()) return kMissing;
  return page->rows[row][column];
}

}  // namespace quorvel
