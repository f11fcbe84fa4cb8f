#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/text.h"

namespace quorvel::sandbox {

// The bytes that `encoded` stands for: "%" and two hexadecimal digits are one byte, a broken escape stands
// for itself. FormDecode reads "+" as a blank; PercentDecode leaves it.
[[nodiscard]] std::string FormDecode(std::string_view encoded);
[[nodiscard]] std::string PercentDecode(std::string_view encoded);

// A form-encoded parameter list. It looks into the body that it is made from, which must outlive it. Of
// parameters with the same name the first counts.
class Form {
 public:
  explicit Form(std::string_view body);

  // The value as it travelled, still encoded.
  [[nodiscard]] std::optional<std::string_view> Raw(std::string_view name) const;
  [[nodiscard]] std::optional<std::string> Bytes(std::string_view name) const;
  [[nodiscard]] std::optional<Text> Value(std::string_view name) const;

 private:
  std::vector<std::pair<std::string_view, std::string_view>> parameters_;
};

}  // namespace quorvel::sandbox
