#pragma once

#include <vector>

#include "platform/text.h"

namespace quorvel {

// A delivery report as the gateway sends it: records separated by ",", their fields by "-". Views of the text
// it was made from.
struct ReportTable {
  std::vector<TextView> header;   // the fields of the first record, as sent
  std::vector<TextView> records;  // the others, for ReportFields
};

// `payload` is the gateway's answer without its tags.
[[nodiscard]] ReportTable ParseReport(TextView payload);

// The record's fields with the gateway's escapes undone: `escaped_comma` and U+0001 stand for ",", "~" for
// "-", and a line end for a blank. `escaped_comma` is the character of code 128 in the gateway's code page.
[[nodiscard]] std::vector<Text> ReportFields(TextView record, char16_t escaped_comma);

}  // namespace quorvel
