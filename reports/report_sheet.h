#pragma once

#include <cstddef>

#include "addin/common/progress.h"
#include "platform/workbook.h"
#include "reports/report_table.h"

namespace quorvel {

// Writes the header in bold into row 1 and a record into each row below, as far as the sheet has rows, or
// until the user cancels. The number of records written. Throws RuntimeError when the host refuses a cell;
// what was written stays.
[[nodiscard]] std::size_t WriteReport(const ReportTable& table, char16_t escaped_comma, Sheet& sheet,
                                      Progress& progress);

}  // namespace quorvel
