#pragma once

#include <cstdint>
#include <memory>

#include "platform/cell_value.h"
#include "platform/text.h"

namespace quorvel {

// Field types by the data-access library's numbers.
enum class FieldType { kInteger = 3, kTimestamp = 135, kVarChar = 200 };

// A disconnected recordset of the data-access library (ADO): fields are appended while it is closed, records
// are added once it is open, a filter hides records, and the cursor walks those that are left. Failures are
// RuntimeErrors with the library's numbers and texts: 3001 a filter it does not understand, 3265 an unknown
// field, 3421 or -2147217887 a value that does not fit its field, 3021 no current record, 3367 a field
// of that name twice, 3704 and 3705 closed and open.
class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual void AppendField(TextView name, FieldType type, std::int32_t size, std::int32_t attributes) = 0;
  virtual void Open() = 0;
  virtual void AddNew() = 0;
  // Into the current record; converted to the field's type.
  virtual void SetValue(TextView field, const CellValue& value) = 0;
  // Ends the addition of the current record.
  virtual void Update() = 0;
  // Applies a filter and moves to the first record that is left; an empty text shows all of them.
  virtual void SetFilter(TextView filter) = 0;
  // The records that the filter left.
  [[nodiscard]] virtual std::int32_t RecordCount() const = 0;
  [[nodiscard]] virtual bool Bof() const = 0;
  [[nodiscard]] virtual bool Eof() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  [[nodiscard]] virtual CellValue Value(TextView field) const = 0;
  virtual void Close() = 0;
};

class RecordsetFactory {
 public:
  virtual ~RecordsetFactory() = default;

  [[nodiscard]] virtual std::unique_ptr<Recordset> Create() = 0;
};

}  // namespace quorvel
