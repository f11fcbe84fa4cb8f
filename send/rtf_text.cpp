#include "send/rtf_text.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/numbers.h"
#include "send/rtf_code_pages.h"
#include "send/rtf_markup.h"

namespace quorvel {

namespace {

constexpr char16_t kMissing = u'\uFFFD';
constexpr int kDefaultCodePage = 1252;
constexpr int kBeyondAnyUse = 100'000'000;  // keeps the numbers of broken RTF within an int
constexpr char16_t kLastByte = 255;
constexpr std::size_t kHexDigits = 4;
constexpr std::array<TextView, kHexDigits + 1> kPadding = {u"0000", u"000", u"00", u"0",
                                                           u""};  // by the number of digits

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

std::optional<unsigned> HexDigitValue(char16_t unit) {
  if (IsDigit(unit)) return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10U;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10U;
  return std::nullopt;
}

struct VisibleText {
  Text text;
  bool has_escaped_bytes = false;
};

// Walks the RTF once and collects what the box shows.
class RtfReader {
 public:
  explicit RtfReader(TextView rtf) : rest_(rtf) {}

  [[nodiscard]] VisibleText Read();

 private:
  struct Group {
    bool skipped = false;  // holds nothing that is text
    bool hidden = false;
    int font = 0;
    int fallback_length = 1;
  };

  void OpenGroup();
  void CloseGroup();
  void TakeMarkup();
  [[nodiscard]] std::optional<int> TakeNumber();
  [[nodiscard]] std::optional<unsigned char> TakeHexByte();
  void ReadByte();
  void Apply(const Markup& markup, std::optional<int> number);
  void SetFontCodePage(std::optional<int> code_page);
  void SkipBytes(int count);

  void ReadCharacter(char16_t unit);
  // Whether the character only stands in for the unit before it; counts it off.
  bool IsFallback();
  void Show(char16_t unit);
  void ShowByte(unsigned char byte);
  void ShowUnit(int number);
  void ShowLineEnd();
  void EndParagraph();
  void Append(char16_t unit);
  void DropLead();
  [[nodiscard]] bool Shown() const { return !groups_.back().skipped && !groups_.back().hidden; }
  [[nodiscard]] int CodePage() const;

  TextView rest_;
  VisibleText visible_;
  std::vector<Group> groups_{Group{}};  // the first is the file itself
  bool closed_ = false;                 // the outermost group ended
  int fallback_left_ = 0;
  unsigned char lead_ = 0;         // first half of a double-byte character; 0 for none
  bool paragraph_ended_ = false;   // shown when something follows
  std::map<int, int> font_pages_;  // code pages by font number
  int document_page_ = kDefaultCodePage;
  int default_font_ = 0;
};

VisibleText RtfReader::Read() {
  while (!rest_.empty() && !closed_) {
    const char16_t unit = rest_.front();
    if (unit == u'\\') {
      TakeMarkup();
      continue;
    }
    rest_.remove_prefix(1);
    if (unit == u'{') {
      OpenGroup();
    } else if (unit == u'}') {
      CloseGroup();
    } else {
      ReadCharacter(unit);
    }
  }
  DropLead();
  return std::move(visible_);
}

void RtfReader::OpenGroup() {
  fallback_left_ = 0;
  groups_.push_back(groups_.back());
}

void RtfReader::CloseGroup() {
  fallback_left_ = 0;
  DropLead();
  if (groups_.size() > 1) groups_.pop_back();
  closed_ = groups_.size() == 1;
}

void RtfReader::TakeMarkup() {
  const Markup markup = ReadMarkup(rest_);
  rest_.remove_prefix(markup.name_length);
  std::optional<int> number;
  if (markup.is_word) {
    number = TakeNumber();
    if (rest_.starts_with(u' ')) rest_.remove_prefix(1);
  }
  Apply(markup, number);
}

std::optional<int> RtfReader::TakeNumber() {
  const bool negative = rest_.size() > 1 && rest_[0] == u'-' && IsDigit(rest_[1]);
  if (negative) rest_.remove_prefix(1);
  if (rest_.empty() || !IsDigit(rest_.front())) return std::nullopt;
  int value = 0;
  for (; !rest_.empty() && IsDigit(rest_.front()); rest_.remove_prefix(1)) {
    if (value < kBeyondAnyUse) value = value * 10 + (rest_.front() - u'0');
  }
  return negative ? -value : value;
}

std::optional<unsigned char> RtfReader::TakeHexByte() {
  if (rest_.size() < 2) return std::nullopt;
  const auto high = HexDigitValue(rest_[0]);
  const auto low = HexDigitValue(rest_[1]);
  if (!high || !low) return std::nullopt;
  rest_.remove_prefix(2);
  return static_cast<unsigned char>(*high * 16 + *low);
}

void RtfReader::ReadByte() {
  const auto byte = TakeHexByte();
  if (Shown()) visible_.has_escaped_bytes = true;
  if (!IsFallback() && byte) ShowByte(*byte);
}

void RtfReader::Apply(const Markup& markup, std::optional<int> number) {
  const bool is_character = markup.effect == Effect::kByte || markup.effect == Effect::kCharacter;
  if (!is_character) fallback_left_ = 0;  // nothing else stands in for a unit
  Group& group = groups_.back();
  switch (markup.effect) {
    case Effect::kNothing:
      return;
    case Effect::kCharacter:
      if (!IsFallback()) Show(markup.character);
      return;
    case Effect::kByte:
      return ReadByte();
    case Effect::kUnit:
      return ShowUnit(number.value_or(0));
    case Effect::kFallbackLength:
      group.fallback_length = std::max(0, number.value_or(1));
      return;
    case Effect::kLineEnd:
      return ShowLineEnd();
    case Effect::kParagraphEnd:
      return EndParagraph();
    case Effect::kFont:
      DropLead();
      group.font = number.value_or(0);
      return;
    case Effect::kDefaultFont:
      group.font = default_font_ = number.value_or(0);
      return;
    case Effect::kPlain:
      group.font = default_font_;
      group.hidden = false;
      return;
    case Effect::kHidden:
      group.hidden = number != 0;
      return;
    case Effect::kFontCharset:
      return SetFontCodePage(CodePageOfCharset(number.value_or(0)));
    case Effect::kFontCodePage:
      return SetFontCodePage(number);
    case Effect::kDocumentCodePage:
      document_page_ = number.value_or(kDefaultCodePage);
      return;
    case Effect::kSkipGroup:
      group.skipped = true;
      return;
    case Effect::kSkipBytes:
      return SkipBytes(number.value_or(0));
  }
}

void RtfReader::SetFontCodePage(std::optional<int> code_page) {
  if (code_page) font_pages_[groups_.back().font] = *code_page;
}

int RtfReader::CodePage() const {
  const auto found = font_pages_.find(groups_.back().font);
  return found == font_pages_.end() ? document_page_ : found->second;
}

void RtfReader::SkipBytes(int count) {
  rest_.remove_prefix(std::min(rest_.size(), static_cast<std::size_t>(std::max(0, count))));
}

void RtfReader::ReadCharacter(char16_t unit) {
  const bool is_layout = unit == u'\r' || unit == u'\n' || unit == u'\0';
  if (!is_layout && !IsFallback()) Show(unit);
}

bool RtfReader::IsFallback() {
  if (fallback_left_ == 0) return false;
  --fallback_left_;
  return true;
}

void RtfReader::Show(char16_t unit) {
  const bool is_trail = lead_ != 0 && unit >= 0x40 && unit < 0x80;
  if (is_trail) return ShowByte(static_cast<unsigned char>(unit));
  DropLead();
  Append(unit);
}

void RtfReader::ShowByte(unsigned char byte) {
  if (!Shown()) return;
  const int code_page = CodePage();
  if (const auto lead = std::exchange(lead_, 0); lead != 0) {
    Append(DecodePair(code_page, lead, byte));
  } else if (IsLeadByte(code_page, byte)) {
    lead_ = byte;
  } else {
    Append(DecodeByte(code_page, byte));
  }
}

void RtfReader::ShowUnit(int number) {
  DropLead();
  Append(static_cast<char16_t>(static_cast<unsigned>(number)));
  fallback_left_ = groups_.back().fallback_length;
}

void RtfReader::ShowLineEnd() {
  DropLead();
  for (const char16_t unit : kCrLf) Append(unit);
}

void RtfReader::EndParagraph() {
  DropLead();
  if (Shown() && std::exchange(paragraph_ended_, true)) visible_.text += kCrLf;
}

void RtfReader::Append(char16_t unit) {
  if (!Shown()) return;
  if (std::exchange(paragraph_ended_, false)) visible_.text += kCrLf;
  visible_.text.push_back(unit);
}

// A first half that no second half followed.
void RtfReader::DropLead() {
  if (std::exchange(lead_, 0) != 0) Append(kMissing);
}

Text HexText(TextView text) {
  Text hex;
  hex.reserve(text.size() * kHexDigits);
  for (const char16_t unit : text) {
    const Text digits = Hex(static_cast<std::int16_t>(unit));
    hex += kPadding[digits.size()];
    hex += digits;
  }
  return hex;
}

}  // namespace

Text CONVERT_RTF_Hex(TextView rtf, bool& unicode_mode) {
  const VisibleText visible = RtfReader(rtf).Read();
  const bool is_wide =
      std::any_of(visible.text.begin(), visible.text.end(), [](char16_t unit) { return unit > kLastByte; });
  if (visible.has_escaped_bytes || is_wide) unicode_mode = true;
  return HexText(visible.text);
}

}  // namespace quorvel
