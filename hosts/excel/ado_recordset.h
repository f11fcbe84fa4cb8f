#pragma once

#include <functional>

#include "hosts/excel/dispatch.h"
#include "platform/recordset.h"

namespace quorvel {

// A recordset of the data-access library itself, late bound. Its failures are RuntimeErrors with its own
// numbers.
class AdoRecordset : public Recordset {
 public:
  explicit AdoRecordset(AutomationObject recordset) : recordset_(std::move(recordset)) {}

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
  [[nodiscard]] AutomationObject Field(TextView name) const;

  AutomationObject recordset_;
};

// Makes recordsets of the library where it is installed and applies a text filter, otherwise those of
// `substitute`. Which it is is found out at the first one and written to the log.
class AdoRecordsets : public RecordsetFactory {
 public:
  // Makes one object of the library's recordset class; throws RuntimeError when there is none.
  using Maker = std::function<AutomationObject()>;

  AdoRecordsets(RecordsetFactory& substitute, Maker make) : substitute_(substitute), make_(std::move(make)) {}

  [[nodiscard]] std::unique_ptr<Recordset> Create() override;

 private:
  [[nodiscard]] bool Works() const;

  RecordsetFactory& substitute_;
  Maker make_;
  std::optional<bool> works_;
};

// An object of the class ADODB.Recordset.
[[nodiscard]] AutomationObject MakeAdoRecordset();

}  // namespace quorvel
