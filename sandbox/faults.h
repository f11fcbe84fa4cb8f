#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel::sandbox {

// The groups of requests that can be told to fail.
enum class Operation { kValidateCrn, kLogin, kBalance, kModes, kSend, kTemplates, kReports, kJobs };
inline constexpr std::size_t kOperations = 8;

enum class FaultKind {
  kReply,      // a result code in place of the reply; the request is not handled
  kRefuse,     // the connection is cut; the request is not handled
  kCutBefore,  // from here on the request is handled: cut before the reply
  kCutInside,  // cut after half of the reply's body
  kCutAfter,   // reset after the whole reply
  kSlow,       // the reply's body in single bytes
  kEmpty,      // an empty body
  kGarbage,    // a body of random bytes
  kMegabyte,   // 1 MiB of them
};

struct Fault {
  FaultKind kind = FaultKind::kReply;
  std::string_view reply;  // of kReply
};

// At most one fault an operation.
class FaultRules {
 public:
  // Adds "[OPERATION=]FAULT", without an operation for sends; a later rule replaces an earlier one for the
  // same operation. The result is the complaint when the rule names an unknown operation or fault.
  [[nodiscard]] std::optional<std::string> Add(std::string_view rule);

  [[nodiscard]] const std::optional<Fault>& For(Operation operation) const {
    return rules_[static_cast<std::size_t>(operation)];
  }

 private:
  std::array<std::optional<Fault>, kOperations> rules_;
};

// The rules that can be given, for a help text.
[[nodiscard]] std::string FaultHelp();

// `size` bytes that look random and are the same each time; NUL and high bytes among them.
[[nodiscard]] std::string Garbage(std::size_t size);

}  // namespace quorvel::sandbox
