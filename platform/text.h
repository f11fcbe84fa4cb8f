#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

// Text is UTF-16. Lengths, positions and counts are in UTF-16 code units, as in the language runtime that the
// add-in's rules come from; an unpaired surrogate is an ordinary unit. Positions are zero-based here.
using Text = std::u16string;
using TextView = std::u16string_view;

inline constexpr TextView kCrLf = u"\r\n";

// Without leading and trailing U+0020. Tabs, line ends and U+00A0 stay (the runtime's Trim).
[[nodiscard]] TextView Trim(TextView text);

// The parts of `text` between the occurrences of `delimiter`, which is not empty. Neighbouring delimiters
// give empty parts; an empty text gives no part at all.
[[nodiscard]] std::vector<Text> Split(TextView text, TextView delimiter);

// `text` with every occurrence of `find` replaced, scanned left to right without overlap. An empty `find`
// gives `text`.
[[nodiscard]] Text Replace(TextView text, TextView find, TextView replacement);

// `text` without any unit that is in `units`.
[[nodiscard]] Text Remove(TextView text, TextView units);

// The runtime's UCase: one unit to one unit, independent of any locale, for the Latin letters of the European
// languages and Vietnamese, modern Greek, Cyrillic, Armenian and full-width letters. Letters whose capital is
// of another script or range stay (micro sign, dotless i, long s).
[[nodiscard]] Text UpperCase(TextView text);

// UTF-8 conversions for files, terminals and logs. Bytes that are not UTF-8 and unpaired surrogates become
// U+FFFD.
[[nodiscard]] std::string ToUtf8(TextView text);
[[nodiscard]] Text FromUtf8(std::string_view bytes);

}  // namespace quorvel
