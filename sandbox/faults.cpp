#include "sandbox/faults.h"

#include <algorithm>
#include <random>

namespace quorvel::sandbox {
namespace {

struct OperationName {
  std::string_view name;
  Operation operation;
};

constexpr std::array<OperationName, kOperations> kOperationNames = {{
    {"validate-crn", Operation::kValidateCrn},
    {"login", Operation::kLogin},
    {"balance", Operation::kBalance},
    {"modes", Operation::kModes},
    {"send", Operation::kSend},
    {"templates", Operation::kTemplates},
    {"reports", Operation::kReports},
    {"jobs", Operation::kJobs},
}};

struct FaultName {
  std::string_view name;
  Fault fault;
};

constexpr std::array kFaultNames = {
    FaultName{"001", {FaultKind::kReply, "001"}},
    FaultName{"002", {FaultKind::kReply, "002"}},
    FaultName{"003", {FaultKind::kReply, "003"}},
    FaultName{"004", {FaultKind::kReply, "004"}},
    FaultName{"005", {FaultKind::kReply, "005"}},
    FaultName{"0110", {FaultKind::kReply, "0110"}},
    FaultName{"error", {FaultKind::kReply, "<ERROR>"}},
    FaultName{"empty", {FaultKind::kEmpty, {}}},
    FaultName{"refuse", {FaultKind::kRefuse, {}}},
    FaultName{"cut-before", {FaultKind::kCutBefore, {}}},
    FaultName{"cut-inside", {FaultKind::kCutInside, {}}},
    FaultName{"cut-after", {FaultKind::kCutAfter, {}}},
    FaultName{"slow", {FaultKind::kSlow, {}}},
    FaultName{"garbage", {FaultKind::kGarbage, {}}},
    FaultName{"megabyte", {FaultKind::kMegabyte, {}}},
};

template <typename Names>
std::string Join(const Names& names) {
  std::string joined;
  for (const auto& entry : names) {
    if (!joined.empty()) joined += ' ';
    joined += entry.name;
  }
  return joined;
}

}  // namespace

std::optional<std::string> FaultRules::Add(std::string_view rule) {
  const std::size_t equals = rule.find('=');
  const bool has_operation = equals != std::string_view::npos;
  const std::string_view operation_name = has_operation ? rule.substr(0, equals) : "send";
  const std::string_view fault_name = has_operation ? rule.substr(equals + 1) : rule;

  const auto operation = std::ranges::find(kOperationNames, operation_name, &OperationName::name);
  if (operation == kOperationNames.end()) {
    return "unknown operation in fault rule \"" + std::string(rule) + "\": one of " + Join(kOperationNames);
  }
  const auto fault = std::ranges::find(kFaultNames, fault_name, &FaultName::name);
  if (fault == kFaultNames.end()) {
    return "unknown fault in fault rule \"" + std::string(rule) + "\": one of " + Join(kFaultNames);
  }
  rules_[static_cast<std::size_t>(operation->operation)] = fault->fault;
  return std::nullopt;
}

std::string FaultHelp() {
  return "[OPERATION=]FAULT. Operations: " + Join(kOperationNames) +
         " (default: send). Faults: " + Join(kFaultNames);
}

std::string Garbage(std::size_t size) {
  std::mt19937 random(20240115);  // NOLINT(bugprone-random-generator-seed): the same bytes each time
  std::string bytes(size, '\0');
  std::ranges::generate(bytes, [&random] { return static_cast<char>(random() & 0xFFU); });
  return bytes;
}

}  // namespace quorvel::sandbox
