#pragma once

#include <string>
#include <string_view>

namespace quorvel {

// 0-9, A-Z and a-z as they are, a blank as "+", every other byte as "%" and two upper-case hexadecimal
// digits.
[[nodiscard]] std::string UrlEncodeBytes(std::string_view bytes);

}  // namespace quorvel
