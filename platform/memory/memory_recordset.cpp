#include "platform/memory/memory_recordset.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>
#include <variant>

#include "platform/cell_value.h"
#include "platform/memory/recordset_error.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr std::int32_t kNullable = 32;
constexpr int kOverflow = 6;

// What the runtime converts to a number without reading a text: numbers, dates and booleans.
std::optional<double> PlainNumber(const CellValue& value) {
  if (const auto* const number = std::get_if<double>(&value)) return *number;
  if (const auto* const date = std::get_if<Date>(&value)) return date->serial;
  if (const auto* const boolean = std::get_if<bool>(&value)) return *boolean ? -1.0 : 0.0;
  return std::nullopt;
}

FieldData ToIntegerData(const CellValue& value) {
  try {
    if (const std::optional<double> number = PlainNumber(value)) return ToLong(*number);
    if (const auto* const text = std::get_if<Text>(&value)) return ToLong(*text);
  } catch (const RuntimeError& error) {
    if (error.number() == kOverflow) throw MakeError(RecordsetError::kMultipleStep);
  }
  throw MakeError(RecordsetError::kTypeConversion);
}

FieldData ToTimestampData(const CellValue& value, Date today) {
  const std::optional<double> number = PlainNumber(value);
  const std::optional<Date> date = number ? Date{*number} : ReadDate(value, today);
  if (!date) throw MakeError(RecordsetError::kTypeConversion);
  const bool in_range = date->serial > -657435 && date->serial < 2958466;  // the years 100 to 9999
  if (!in_range) throw MakeError(RecordsetError::kMultipleStep);
  return *date;
}

FieldData ToTextData(const CellValue& value, std::int32_t size) {
  if (std::holds_alternative<CellError>(value)) throw MakeError(RecordsetError::kTypeConversion);
  Text text = ToText(value);
  if (std::cmp_greater(text.size(), size)) throw MakeError(RecordsetError::kMultipleStep);
  return text;
}

FieldData ToFieldData(const CellValue& value, const FieldDefinition& field, Date today) {
  if (std::holds_alternative<std::monostate>(value)) {
    if ((field.attributes & kNullable) == 0) throw MakeError(RecordsetError::kMultipleStep);
    return {};
  }
  if (field.type == FieldType::kInteger) return ToIntegerData(value);
  if (field.type == FieldType::kTimestamp) return ToTimestampData(value, today);
  return ToTextData(value, field.size);
}

struct ToCellValue {
  CellValue operator()(std::monostate) const { return {}; }
  CellValue operator()(std::int32_t number) const { return static_cast<double>(number); }
  CellValue operator()(Date date) const { return date; }
  CellValue operator()(const Text& text) const { return text; }
};

}  // namespace

void MemoryRecordset::AppendField(TextView name, FieldType type, std::int32_t size, std::int32_t attributes) {
  if (open_) throw MakeError(RecordsetError::kObjectOpen);
  const Text upper = UpperCase(name);
  const auto is_same = [&upper](const FieldDefinition& field) { return UpperCase(field.name) == upper; };
  if (std::ranges::any_of(fields_, is_same)) throw MakeError(RecordsetError::kObjectInCollection);
  fields_.push_back({Text(name), type, size, attributes});
}

void MemoryRecordset::Open() {
  if (open_) throw MakeError(RecordsetError::kObjectOpen);
  if (fields_.empty()) throw MakeError(RecordsetError::kInvalidConnection);
  open_ = true;
}

void MemoryRecordset::AddNew() {
  RequireOpen();
  current_ = shown_.size();
  shown_.push_back(Records());
  data_.resize(data_.size() + fields_.size());
}

void MemoryRecordset::SetValue(TextView field, const CellValue& value) {
  RequireOpen();
  const std::size_t index = FindField(fields_, field);
  data_[Position(index)] = ToFieldData(value, fields_[index], today_);
}

void MemoryRecordset::Update() {
  if (Eof()) throw MakeError(RecordsetError::kNoCurrentRecord);
}

void MemoryRecordset::SetFilter(TextView filter) {
  if (!open_) return;
  std::vector<std::size_t> shown(Records());
  std::iota(shown.begin(), shown.end(), std::size_t{0});
  if (!filter.empty()) {
    const RecordsetFilter parsed = RecordsetFilter::Parse(filter, fields_, today_);
    const std::span<const FieldData> data(data_);
    std::erase_if(shown, [&](std::size_t record) {
      return !parsed.Matches(data.subspan(record * fields_.size(), fields_.size()));
    });
  }
  shown_ = std::move(shown);
  current_ = 0;
}

std::int32_t MemoryRecordset::RecordCount() const {
  RequireOpen();
  return static_cast<std::int32_t>(shown_.size());
}

bool MemoryRecordset::Bof() const {
  RequireOpen();
  return shown_.empty();
}

bool MemoryRecordset::Eof() const {
  RequireOpen();
  return current_ == shown_.size();
}

void MemoryRecordset::MoveFirst() {
  if (Bof()) throw MakeError(RecordsetError::kNoCurrentRecord);
  current_ = 0;
}

void MemoryRecordset::MoveNext() {
  if (Eof()) throw MakeError(RecordsetError::kNoCurrentRecord);
  ++current_;
}

CellValue MemoryRecordset::Value(TextView field) const {
  RequireOpen();
  return std::visit(ToCellValue{}, data_[Position(FindField(fields_, field))]);
}

void MemoryRecordset::Close() {
  RequireOpen();
  data_.clear();
  shown_.clear();
  current_ = 0;
  open_ = false;
}

void MemoryRecordset::RequireOpen() const {
  if (!open_) throw MakeError(RecordsetError::kObjectClosed);
}

std::size_t MemoryRecordset::Position(std::size_t field) const {
  if (Eof()) throw MakeError(RecordsetError::kNoCurrentRecord);
  return shown_[current_] * fields_.size() + field;
}

std::unique_ptr<Recordset> MemoryRecordsets::Create() {
  return std::make_unique<MemoryRecordset>(clock_.Now());
}

}  // namespace quorvel
