#pragma once

#include <vector>

#include "platform/text.h"

namespace quorvel {

// What a send hands to the preview, and the preview's answer.
struct PreviewState {
  std::vector<Text> PreviewMessages;       // as they will be sent, in plain characters
  std::vector<Text> PreviewMobileNumbers;  // parallel to PreviewMessages
  bool PreviewApproved = false;
  bool UnicodeMode = false;  // selects the Unicode counting rule
};

}  // namespace quorvel
