#pragma once

#include <new>
#include <string_view>
#include <utility>

#include "hosts/excel/win32.h"
#include "platform/runtime_error.h"

namespace quorvel {

// The result code that stands for the exception being handled: 0x800A0000 plus the number of a run-time
// error, E_OUTOFMEMORY, otherwise E_UNEXPECTED. What it was is written to the log, with `where`. To be called
// in a handler; never throws.
[[nodiscard]] HRESULT CurrentExceptionToResult(std::string_view where) noexcept;

// Runs the body of a COM entry point: no exception leaves it.
template <class Body>
[[nodiscard]] HRESULT Guarded(std::string_view where, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return CurrentExceptionToResult(where);
  }
}

}  // namespace quorvel
