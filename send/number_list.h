#pragma once

#include <cstddef>
#include <map>
#include <unordered_set>
#include <utility>

#include "platform/text.h"

namespace quorvel {

// The mobile numbers of a send, joined by ",".
class NumberList {
 public:
  NumberList() = default;
  NumberList(const NumberList&) = delete;  // the indexes refer to the list in place
  NumberList& operator=(const NumberList&) = delete;

  void Add(TextView number);

  // Whether `number` occurs anywhere in the joined list, inside of a longer number too. Takes time in
  // proportion to the number, on average: the list's substrings are indexed once for each length that is
  // asked for.
  [[nodiscard]] bool Contains(TextView number);

  [[nodiscard]] bool empty() const { return count_ == 0; }
  [[nodiscard]] const Text& joined() const { return joined_; }
  // Parts between commas; more than were added when a number itself holds a comma.
  [[nodiscard]] std::size_t parts() const { return empty() ? 0 : commas_ + 1; }

 private:
  // Hashes and compares substrings of one length by their place in the list.
  struct Substrings {
    using is_transparent = void;  // NOLINT(readability-identifier-naming): the standard's name

    TextView At(std::size_t place) const { return TextView(*list).substr(place, length); }
    TextView At(TextView text) const { return text; }
    template <typename Key>
    std::size_t operator()(const Key& key) const {
      return std::hash<TextView>()(At(key));
    }
    template <typename Left, typename Right>
    bool operator()(const Left& left, const Right& right) const {
      return At(left) == At(right);
    }

    const Text* list;
    std::size_t length;
  };

  // The substrings of one length that hold a comma, or of those that hold none, up to the place `scanned`.
  struct Index {
    explicit Index(const Substrings& substrings) : places(0, substrings, substrings) {}

    std::unordered_set<std::size_t, Substrings, Substrings> places;
    std::size_t scanned = 0;
    std::size_t after_last_comma = 0;
  };

  void Extend(Index& index, std::size_t length, bool with_comma) const;

  Text joined_;
  std::size_t count_ = 0;
  std::size_t commas_ = 0;
  std::map<std::pair<std::size_t, bool>, Index> indexes_;
};

}  // namespace quorvel
