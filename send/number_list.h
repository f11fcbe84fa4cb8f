#pragma once

#include <cstddef>
#include <map>
#include <utility>

#include "platform/text.h"
#include "send/substring_set.h"

namespace quorvel {

// The mobile numbers of a send, joined by ",".
class NumberList {
 public:
  void Add(TextView number);

  // Whether `number` occurs anywhere in the joined list, inside of a longer number too. Takes time in
  // proportion to the number, on average: the list's substrings are indexed once for each length that is
  // asked for.
  [[nodiscard]] bool Contains(TextView number);

  // Frees what Contains has built; it builds it anew when it is asked again.
  void ForgetIndexes() { indexes_.clear(); }

  [[nodiscard]] bool empty() const { return count_ == 0; }
  [[nodiscard]] const Text& joined() const { return joined_; }
  // Parts between commas; more than were added when a number itself holds a comma.
  [[nodiscard]] std::size_t parts() const { return empty() ? 0 : commas_ + 1; }

 private:
  // The substrings of one length that hold a comma, or of those that hold none, each once.
  struct Index {
    SubstringSet substrings;
    std::size_t scanned = 0;           // places of the list that are taken in
    std::size_t after_last_comma = 0;  // among them
  };

  void Extend(Index& index, std::size_t length, bool with_comma) const;

  Text joined_;
  std::size_t count_ = 0;
  std::size_t commas_ = 0;
  std::map<std::pair<std::size_t, bool>, Index> indexes_;
};

}  // namespace quorvel
