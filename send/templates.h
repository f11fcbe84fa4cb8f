#pragma once

#include <vector>

#include "platform/code_page.h"
#include "platform/text.h"

namespace quorvel {

// A message text that the gateway keeps under a name.
struct MessageTemplate {
  Text name;
  Text text;
};

// What the gateway answers to a pull.
struct PulledLists {
  std::vector<MessageTemplate> templates;
  std::vector<Text> sender_ids;
};

// Reads the answer to a pull. An answer without any marker, an error code among them, gives empty lists.
// Throws RuntimeError 5 for one that is cut or malformed and 13 for bad hex digits.
[[nodiscard]] PulledLists ParsePullAnswer(TextView answer, const CodePage& code_page);

}  // namespace quorvel
