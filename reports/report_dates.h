#pragma once

#include "platform/dates.h"

namespace quorvel {

// Years have four digits, months count from 1.

[[nodiscard]] bool IsLeapYear(int year);
[[nodiscard]] int DaysOfMonth(int month, int year);

// Throws TypeMismatch for a day that the month does not have.
[[nodiscard]] Date ReportDate(int day, int month, int year);

}  // namespace quorvel
