#pragma once

#include <string_view>

#include "platform/text.h"

namespace quorvel {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "text is UTF-16 on both sides");

// `text` as the system takes it; valid as long as `text` is and does not change.
[[nodiscard]] inline const wchar_t* Wide(const Text& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

[[nodiscard]] inline Text FromWide(std::wstring_view text) {
  return {text.begin(), text.end()};
}

}  // namespace quorvel
