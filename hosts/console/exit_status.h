#pragma once

#include <stdexcept>

namespace quorvel {

// What the program ends with. Scripts depend on the numbers.
enum class ExitStatus {
  kDone = 0,
  kRefused = 1,     // by the add-in or the gateway, or nobody knows what became of it
  kUsage = 2,       // the arguments make no sense
  kCancelled = 3,   // by the user, or a question had nobody to answer it
  kBadWorkbook = 4  // the workbook cannot be read
};

// An argument that turned out not to fit what the form offers; the text names the option.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The user interrupted the program where nothing has a cancel button.
class Interrupted : public std::exception {};

}  // namespace quorvel
