#pragma once

#include "platform/code_page.h"

namespace quorvel {

// The system's ANSI code page, with the system's own best fit.
class SystemCodePage : public CodePage {
 public:
  [[nodiscard]] std::string Encode(TextView text) const override;
  [[nodiscard]] Text Decode(std::string_view bytes) const override;
};

}  // namespace quorvel
