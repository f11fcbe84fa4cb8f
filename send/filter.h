#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "account/context.h"
#include "platform/workbook.h"
#include "send/send_choices.h"

namespace quorvel {

// The columns that a filter formula can name: those that the message names, also beyond column Z; each once,
// in order of appearance and in capitals. A doubled "#" delimits nothing.
[[nodiscard]] std::vector<Text> ScanFilterColumns(TextView message);

// The formula in the recordset's language: "#B#" or "#b#" is the field FC_B, "##" the literal "#".
[[nodiscard]] Text RewriteFormula(TextView formula, const std::vector<Text>& columns);

struct FilteredRows {
  SendOutcome outcome = SendOutcome::kNotSent;  // when `rows` is empty: how the send ended
  std::vector<std::int32_t> rows;
};

// The rows whose cells satisfy the formula, in their order, after the user agreed to their number. Loads the
// rows into a recordset of the host. What stops the send is shown; a formula that the recordset refuses
// throws its RuntimeError.
[[nodiscard]] FilteredRows FilterRows(const AddInContext& context, const SendChoices& choices,
                                      TextView formula, Sheet& sheet, const std::vector<std::int32_t>& rows);

}  // namespace quorvel
