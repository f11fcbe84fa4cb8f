#pragma once

#include <cstddef>

#include "platform/text.h"

namespace quorvel {

// What a control word or symbol of rich text does to the characters.
enum class Effect {
  kNothing,
  kCharacter,
  kByte,            // two hexadecimal digits follow
  kUnit,            // the number is the UTF-16 unit; its fallback follows
  kFallbackLength,  // of the units in this group
  kLineEnd,
  kParagraphEnd,
  kFont,
  kDefaultFont,
  kPlain,
  kHidden,
  kFontCharset,
  kFontCodePage,
  kDocumentCodePage,
  kSkipGroup,
  kSkipBytes
};

struct Markup {
  Effect effect = Effect::kNothing;
  char16_t character = 0;       // for kCharacter
  std::size_t name_length = 0;  // with the backslash; the number that may follow is not part of the name
  bool is_word = false;         // a number and one blank belong to it
};

// The markup that `rtf` begins with; its first unit is a backslash.
[[nodiscard]] Markup ReadMarkup(TextView rtf);

}  // namespace quorvel
