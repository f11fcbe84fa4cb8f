#pragma once

#include <exception>
#include <string>

#include "platform/text.h"

namespace quorvel {

// A run-time error of the language runtime or of the host, with the number and the English description that
// the runtime documents for it. The only exception type that the core throws on purpose; each event handler
// catches it.
class RuntimeError : public std::exception {
 public:
  RuntimeError(int number, Text description);

  [[nodiscard]] int number() const noexcept { return number_; }
  [[nodiscard]] const Text& description() const noexcept { return description_; }
  [[nodiscard]] const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  int number_;
  Text description_;
  std::string utf8_;
};

// The errors that the runtime itself raises.
[[nodiscard]] RuntimeError InvalidCall();          // 5 "Invalid procedure call or argument"
[[nodiscard]] RuntimeError Overflow();             // 6 "Overflow"
[[nodiscard]] RuntimeError SubscriptOutOfRange();  // 9 "Subscript out of range"
[[nodiscard]] RuntimeError TypeMismatch();         // 13 "Type mismatch"
[[nodiscard]] RuntimeError ObjectNotSet();         // 91 "Object variable or With block variable not set"
[[nodiscard]] RuntimeError InvalidUseOfNull();     // 94 "Invalid use of Null"

}  // namespace quorvel
