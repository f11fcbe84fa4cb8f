#include "platform/memory/recordset_error.h"

#include <stdexcept>

#include "platform/text.h"

namespace quorvel {

namespace {

TextView Description(RecordsetError error) {
  switch (error) {
    case RecordsetError::kMultipleStep:
      return u"Multiple-step operation generated errors. Check each status value.";
    case RecordsetError::kInvalidArgument:
      return u"Arguments are of the wrong type, are out of acceptable range, or are in conflict with one another.";
    case RecordsetError::kNoCurrentRecord:
      return u"Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a current record.";
    case RecordsetError::kItemNotFound:
      return u"Item cannot be found in the collection corresponding to the requested name or ordinal.";
    case RecordsetError::kObjectInCollection:
      return u"Object is already in collection. Cannot append.";
    case RecordsetError::kTypeConversion:
      return u"Application uses a value of the wrong type for the current operation.";
    case RecordsetError::kObjectClosed:
      return u"Operation is not allowed when the object is closed.";
    case RecordsetError::kObjectOpen:
      return u"Operation is not allowed when the object is open.";
    case RecordsetError::kInvalidConnection:
      return u"The connection cannot be used to perform this operation. It is either closed or invalid in this context.";
  }
  throw std::logic_error("no description for this recordset error");
}

}  // namespace

RuntimeError MakeError(RecordsetError error) {
  return {static_cast<int>(error), Text(Description(error))};
}

}  // namespace quorvel
