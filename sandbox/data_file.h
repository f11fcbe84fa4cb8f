#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "sandbox/data.h"

namespace quorvel::sandbox {

struct DataError {
  std::string place;  // "/accounts/0/credit", or "line 3, column 5"; empty when the whole file is meant
  std::string reason;
};

// Account data as JSON in UTF-8. Unknown keys, double user names and values of a wrong kind are errors.
[[nodiscard]] std::variant<Data, DataError> ParseData(std::string_view json);
[[nodiscard]] std::string DumpData(const Data& data);

[[nodiscard]] std::variant<Data, DataError> LoadData(const std::filesystem::path& file);

// Replaces the file in one step, keeping its permissions. The result is the reason when that failed; the old
// file then stands as it was.
[[nodiscard]] std::optional<std::string> SaveData(const std::filesystem::path& file, const Data& data);

// One account to try things with: CRN 1001, user and password "demo", credit 500.
[[nodiscard]] Data DefaultData();

}  // namespace quorvel::sandbox
