#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "sandbox/data.h"
#include "sandbox/form.h"

namespace quorvel::sandbox {

struct ReportQuery {
  std::chrono::local_days from;  // day of submission, both included
  std::chrono::local_days to;
  char16_t mode = 0;  // a mode's letter; 0 for all
};

// Nothing when a parameter is missing or bad, the days are in the wrong order or the mode is not in `modes`.
[[nodiscard]] std::optional<ReportQuery> ReadReportQuery(const Form& form, const std::vector<Text>& modes);

// How far `message` has come: SCHEDULED until it is due, SUBMITTED for half a minute, then DELIVERED, or
// FAILED when the number ends in 0.
[[nodiscard]] TextView DeliveryStatus(const Message& message, LocalTime now);

// The account's reports that `query` asks for, as an envelope: a header record and one record a message; "0"
// when there is none.
[[nodiscard]] std::string ReportReply(const Data& data, const Account& account, const ReportQuery& query,
                                      LocalTime now);

}  // namespace quorvel::sandbox
