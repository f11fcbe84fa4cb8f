#include "send/number_list.h"

#include <algorithm>

namespace quorvel {

namespace {

// No mobile number is longer; what is gets searched for, not indexed.
constexpr std::size_t kLongestIndexed = 64;

}  // namespace

void NumberList::Add(TextView number) {
  if (count_ > 0) {
    joined_.push_back(u',');
    ++commas_;
  }
  joined_ += number;
  commas_ += static_cast<std::size_t>(std::count(number.begin(), number.end(), u','));
  ++count_;
}

bool NumberList::Contains(TextView number) {
  const bool is_indexed =
      !number.empty() && number.size() <= kLongestIndexed && joined_.size() <= SubstringSet::kLongestText;
  if (!is_indexed) return joined_.find(number) != Text::npos;
  const bool with_comma = number.find(u',') != TextView::npos;
  Index& index = indexes_[{number.size(), with_comma}];
  Extend(index, number.size(), with_comma);
  return index.substrings.Contains(joined_, number);
}

void NumberList::Extend(Index& index, std::size_t length, bool with_comma) const {
  for (; index.scanned < joined_.size(); ++index.scanned) {
    const std::size_t end = index.scanned + 1;
    if (joined_[index.scanned] == u',') index.after_last_comma = end;
    if (end < length) continue;
    const std::size_t start = end - length;
    if ((index.after_last_comma > start) == with_comma) index.substrings.Insert(joined_, start, length);
  }
}

}  // namespace quorvel
