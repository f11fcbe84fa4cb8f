#pragma once

#include "platform/runtime_error.h"

namespace quorvel {

// The data-access library's errors, by its numbers.
enum class RecordsetError {
  kMultipleStep = -2147217887,  // a text too long, a number out of range or a NULL that its field cannot hold
  kInvalidArgument = 3001,      // a filter that is not understood
  kNoCurrentRecord = 3021,
  kItemNotFound = 3265,
  kObjectInCollection = 3367,
  kTypeConversion = 3421,
  kObjectClosed = 3704,
  kObjectOpen = 3705,
  kInvalidConnection = 3709  // opened without fields
};

// With the library's number and text.
[[nodiscard]] RuntimeError MakeError(RecordsetError error);

}  // namespace quorvel
