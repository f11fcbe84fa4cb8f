#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/clock.h"
#include "platform/memory/recordset_filter.h"
#include "platform/recordset.h"

namespace quorvel {

// A Recordset that lives in memory. Its filters are those of RecordsetFilter. Where the library's
// documentation leaves it open:
// - Field names are told apart with case ignored; a second one of the same name is refused (3367). No field
// can
//   be appended while open (3705), and none at all makes Open fail (3709).
// - A value is converted to its field's type by the runtime's rules when it is set: a value that does not
//   convert, every error value included, is the wrong type (3421); a number or date out of range and a text
//   longer than the field are refused (-2147217887). Nothing is cut off, and a refused value changes nothing.
// - An empty value is stored as NULL when the attributes hold the nullable bit (32; -1 holds it) and is
// refused
//   otherwise (-2147217887). A field never set, and a NULL, read as empty.
// - Values are stored at once, so that the end of an addition, by Update, a move or the next AddNew, has
// nothing
//   left to do.
// - A filter hides records when it is set. A record added later is shown until a filter is set again. A
//   refused filter leaves the former one and the current record. While closed a filter has no effect.
// - Close drops the records and the filter and keeps the fields.
class MemoryRecordset final : public Recordset {
 public:
  // `today` supplies the year that a date without one leaves out.
  explicit MemoryRecordset(Date today) : today_(today) {}

  void AppendField(TextView name, FieldType type, std::int32_t size, std::int32_t attributes) override;
  void Open() override;
  void AddNew() override;
  void SetValue(TextView field, const CellValue& value) override;
  void Update() override;
  void SetFilter(TextView filter) override;
  [[nodiscard]] std::int32_t RecordCount() const override;
  [[nodiscard]] bool Bof() const override;
  [[nodiscard]] bool Eof() const override;
  void MoveFirst() override;
  void MoveNext() override;
  [[nodiscard]] CellValue Value(TextView field) const override;
  void Close() override;

 private:
  void RequireOpen() const;
  [[nodiscard]] std::size_t Records() const { return data_.size() / fields_.size(); }
  // Where the field of the current record is in data_.
  [[nodiscard]] std::size_t Position(std::size_t field) const;

  Date today_;
  bool open_ = false;
  std::vector<FieldDefinition> fields_;
  std::vector<FieldData> data_;     // record by record
  std::vector<std::size_t> shown_;  // the records that the filter left, by number
  std::size_t current_ = 0;         // in shown_; its end is the end of the recordset
};

class MemoryRecordsets final : public RecordsetFactory {
 public:
  // `clock` outlives the factory.
  explicit MemoryRecordsets(const Clock& clock) : clock_(clock) {}

  [[nodiscard]] std::unique_ptr<Recordset> Create() override;

 private:
  const Clock& clock_;
};

}  // namespace quorvel
