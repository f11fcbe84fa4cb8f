#include "hosts/excel/windows_clock.h"

#include "hosts/excel/win32.h"

namespace quorvel {

Date WindowsClock::Now() const {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return MakeDate({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond}).value();
}

std::int64_t WindowsClock::Ticks() const {
  return static_cast<std::int64_t>(GetTickCount64());
}

}  // namespace quorvel
