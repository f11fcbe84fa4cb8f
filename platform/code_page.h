#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"

namespace quorvel {

// The system's 8-bit code page: the only door between text and bytes.
class CodePage {
 public:
  virtual ~CodePage() = default;

  // One unit to one or more bytes. A unit that the code page lacks becomes its best fit, otherwise "?".
  [[nodiscard]] virtual std::string Encode(TextView text) const = 0;
  [[nodiscard]] virtual Text Decode(std::string_view bytes) const = 0;
};

// windows-1252 with Microsoft's best-fit mappings; the five undefined bytes map to and from U+0081 and so on.
[[nodiscard]] const CodePage& Windows1252();

}  // namespace quorvel
