#pragma once

#include <cstddef>

#include "platform/text.h"

namespace quorvel {

// Which layout of the gateway's submission pages a send uses.
enum class Layout {
  kStandard,  // plain text, one row one message
  kUnicode,   // hex text
  kRecords,   // filtered and grouped sends
};

// Where the sends differ while the rows are walked and when the result is shown. What they put on the wire
// differently is in submission.cpp.
struct SendRules {
  Layout layout;
  bool hex;              // template and values travel as hex text
  bool numeric_numbers;  // rows whose number is not numeric are passed over
  std::size_t longest_single;
  TextView long_message;  // the question's parts round the row number
  TextView long_question;
  TextView question_title;
  TextView no_credit;
  TextView accepted_title;
  TextView refused_title;
};

[[nodiscard]] const SendRules& RulesOf(Layout layout);

}  // namespace quorvel
