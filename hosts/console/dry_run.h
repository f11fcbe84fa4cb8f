#pragma once

#include <string_view>

#include "hosts/console/output.h"

namespace quorvel {

// Prints a request that was composed and not sent: its path on the first line, its body as it would go over
// the wire on the rest; passwords are masked.
void PrintDryRun(std::string_view path, std::string_view body, Output& output);

}  // namespace quorvel
