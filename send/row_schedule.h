#pragma once

#include <cstdint>
#include <optional>

#include "platform/clock.h"
#include "platform/forms.h"
#include "platform/workbook.h"

namespace quorvel {

// The dates of a send in which every row has its own: a cell must hold a date; one that has passed is sent at
// once when the user agrees, asked for the first of them only.
class RowSchedule {
 public:
  // `column` outlives the object.
  RowSchedule(Forms& forms, const Clock& clock, TextView column)
      : forms_(forms), clock_(clock), column_(column) {}

  // Whole minutes until the row's date, 0 for one that has passed; nothing when the send has to stop, which
  // the user was told.
  [[nodiscard]] std::optional<std::int32_t> Minutes(Sheet& sheet, std::int32_t row);

 private:
  [[nodiscard]] bool AcceptsExpired(const CellAddress& cell, Date date);

  Forms& forms_;
  const Clock& clock_;
  TextView column_;
  bool expired_accepted_ = false;
};

}  // namespace quorvel
