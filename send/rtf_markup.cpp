#include "send/rtf_markup.h"

#include <algorithm>
#include <iterator>

namespace quorvel {

namespace {

struct KnownMarkup {
  TextView text;  // what stands behind its last letter has to be there but is not part of the name
  Effect effect;
  char16_t character = 0;
};

// What starts with another comes first. Other markup has no effect on the characters.
constexpr KnownMarkup kMarkup[] = {
    {uR"(\fs17)", Effect::kNothing},
    {uR"(\lang14337\f)", Effect::kFont},
    {uR"(\lang3076\f)", Effect::kFont},
    {uR"(\\lang3076\f)", Effect::kFont},  // markup too, in spite of its doubled backslash
    {uR"(\lang1025\f)", Effect::kFont},
    {uR"(\lang1033\f0)", Effect::kFont},
    {uR"(\lang1033\f1)", Effect::kFont},
    {uR"(\lang1033\f)", Effect::kFont},
    {uR"(\f)", Effect::kFont},
    {uR"(\rtlch)", Effect::kNothing},
    {uR"(\ltrch)", Effect::kNothing},
    {uR"(\par })", Effect::kParagraphEnd},
    {uR"(\par )", Effect::kParagraphEnd},
    {uR"(\par)", Effect::kParagraphEnd},
    {u"\\\r", Effect::kParagraphEnd},
    {u"\\\n", Effect::kParagraphEnd},
    {uR"(\')", Effect::kByte},
    {uR"(\|)", Effect::kByte},
    {uR"(\u)", Effect::kUnit},
    {uR"(\uc)", Effect::kFallbackLength},
    {uR"(\line)", Effect::kLineEnd},
    {uR"(\row)", Effect::kLineEnd},
    {uR"(\cell)", Effect::kCharacter, u'\t'},
    {uR"(\tab)", Effect::kCharacter, u'\t'},
    {uR"(\\)", Effect::kCharacter, u'\\'},
    {uR"(\{)", Effect::kCharacter, u'{'},
    {uR"(\})", Effect::kCharacter, u'}'},
    {uR"(\~)", Effect::kCharacter, u'\u00A0'},
    {uR"(\_)", Effect::kCharacter, u'\u2011'},
    {uR"(\endash)", Effect::kCharacter, u'\u2013'},
    {uR"(\emdash)", Effect::kCharacter, u'\u2014'},
    {uR"(\enspace)", Effect::kCharacter, u'\u2002'},
    {uR"(\emspace)", Effect::kCharacter, u'\u2003'},
    {uR"(\lquote)", Effect::kCharacter, u'\u2018'},
    {uR"(\rquote)", Effect::kCharacter, u'\u2019'},
    {uR"(\ldblquote)", Effect::kCharacter, u'\u201C'},
    {uR"(\rdblquote)", Effect::kCharacter, u'\u201D'},
    {uR"(\bullet)", Effect::kCharacter, u'\u2022'},
    {uR"(\zwnj)", Effect::kCharacter, u'\u200C'},
    {uR"(\zwj)", Effect::kCharacter, u'\u200D'},
    {uR"(\ltrmark)", Effect::kCharacter, u'\u200E'},
    {uR"(\rtlmark)", Effect::kCharacter, u'\u200F'},
    {uR"(\deff)", Effect::kDefaultFont},
    {uR"(\plain)", Effect::kPlain},
    {uR"(\v)", Effect::kHidden},
    {uR"(\fcharset)", Effect::kFontCharset},
    {uR"(\cpg)", Effect::kFontCodePage},
    {uR"(\ansicpg)", Effect::kDocumentCodePage},
    {uR"(\*)", Effect::kSkipGroup},
    {uR"(\fonttbl)", Effect::kSkipGroup},
    {uR"(\colortbl)", Effect::kSkipGroup},
    {uR"(\stylesheet)", Effect::kSkipGroup},
    {uR"(\info)", Effect::kSkipGroup},
    {uR"(\pict)", Effect::kSkipGroup},
    {uR"(\pntext)", Effect::kSkipGroup},
    {uR"(\listtext)", Effect::kSkipGroup},
    {uR"(\bin)", Effect::kSkipBytes},
};

bool IsLetter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// Whether `rtf` begins with `markup`, and not with a longer word.
bool Begins(TextView rtf, TextView markup) {
  if (!rtf.starts_with(markup)) return false;
  return !IsLetter(markup.back()) || rtf.size() == markup.size() || !IsLetter(rtf[markup.size()]);
}

// Up to the last letter; a symbol is one unit behind its backslash.
std::size_t KnownNameLength(TextView markup) {
  const auto last = std::find_if(markup.rbegin(), markup.rend(), IsLetter);
  return last == markup.rend() ? 2 : static_cast<std::size_t>(markup.rend() - last);
}

std::size_t UnknownNameLength(TextView rtf) {
  const auto* const end = std::find_if_not(rtf.begin() + 1, rtf.end(), IsLetter);
  return std::min(rtf.size(), std::max<std::size_t>(2, static_cast<std::size_t>(end - rtf.begin())));
}

}  // namespace

Markup ReadMarkup(TextView rtf) {
  const auto* const known = std::find_if(std::begin(kMarkup), std::end(kMarkup),
                                         [&](const KnownMarkup& row) { return Begins(rtf, row.text); });
  Markup markup;
  if (known == std::end(kMarkup)) {
    markup.name_length = UnknownNameLength(rtf);
  } else {
    markup = {known->effect, known->character, KnownNameLength(known->text)};
  }
  markup.is_word = IsLetter(rtf[markup.name_length - 1]);
  return markup;
}

}  // namespace quorvel
