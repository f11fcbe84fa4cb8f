#include "platform/workbook.h"

#include <algorithm>

#include "platform/numbers.h"

namespace quorvel {

Text A1(const CellAddress& address) {
  return Text(address.column) + NumberToText(address.row);
}

std::int32_t ColumnNumber(TextView letters) {
  constexpr std::size_t kMostLetters = 5;  // keeps the number within 32 bits
  if (letters.empty() || letters.size() > kMostLetters) return 0;
  std::int32_t number = 0;
  for (const char16_t letter : letters) {
    const bool upper = letter >= u'A' && letter <= u'Z';
    const bool lower = letter >= u'a' && letter <= u'z';
    if (!upper && !lower) return 0;
    number = number * 26 + (letter - (upper ? u'A' : u'a') + 1);
  }
  return number;
}

Text ColumnLetters(std::int32_t number) {
  Text letters;
  for (; number > 0; number = (number - 1) / 26) {
    letters.push_back(static_cast<char16_t>(u'A' + (number - 1) % 26));
  }
  std::reverse(letters.begin(), letters.end());
  return letters;
}

}  // namespace quorvel
