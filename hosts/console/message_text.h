#pragma once

#include "hosts/console/options.h"
#include "platform/text.h"

namespace quorvel {

// A message as the arguments give it: a text, or the name of a stored template.
struct MessageText {
  bool is_template = false;
  Text text;
};

// A file is the message as it stands, its last line end included. Throws UsageError for a file that cannot be
// read as text.
[[nodiscard]] MessageText ReadMessage(const MessageOptions& options);

}  // namespace quorvel
