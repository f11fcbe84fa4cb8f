#pragma once

#include <rtl/ustring.hxx>
#include <string_view>

#include "platform/text.h"

namespace quorvel {

// Text as the application's own string class, and back. Unpaired surrogates survive both ways.
[[nodiscard]] rtl::OUString ToUno(TextView text);
[[nodiscard]] rtl::OUString ToUno(std::string_view ascii);
[[nodiscard]] Text FromUno(const rtl::OUString& text);

}  // namespace quorvel
