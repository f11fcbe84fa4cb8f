#pragma once

#include <com/sun/star/uno/Exception.hpp>
#include <exception>
#include <string_view>

#include "hosts/calc/log.h"
#include "hosts/calc/uno_text.h"
#include "platform/runtime_error.h"

namespace quorvel {

// What a spreadsheet application answers when it refuses an operation on its objects.
inline constexpr int kApplicationError = 1004;

// `call()`; what the application throws becomes a RuntimeError 1004 with the application's reason.
template <typename Call>
decltype(auto) AskingCalc(const Call& call) {
  try {
    return call();
  } catch (const css::uno::Exception& error) {
    const Text reason = FromUno(error.Message);
    throw RuntimeError(kApplicationError,
                       reason.empty() ? Text(u"Application-defined or object-defined error") : reason);
  }
}

// The one way into the add-in from the application: runs `handler`, and logs what it throws, since no
// exception may reach the caller. Returns whether nothing was thrown.
template <typename Handler>
bool AtEntry(std::string_view where, const Handler& handler) noexcept {
  try {
    handler();
    return true;
  } catch (const css::uno::Exception& error) {
    Log(where, ToUtf8(FromUno(error.Message)));
  } catch (const std::exception& error) {
    Log(where, error.what());
  }
  return false;
}

}  // namespace quorvel
