#include "hosts/excel/ado_recordset.h"

#include "hosts/excel/automation_error.h"
#include "hosts/excel/log.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr std::int32_t kClientCursor = 3;
constexpr std::int32_t kUnspecified = -1;

// Three records, one of which passes a text filter; one is blank, as a cell may be.
bool FiltersText(Recordset& recordset) {
  recordset.AppendField(u"A", FieldType::kVarChar, 10, kUnspecified);
  recordset.Open();
  for (const CellValue& value : {CellValue(Text(u"abc")), CellValue(), CellValue(Text(u"xyz"))}) {
    recordset.AddNew();
    recordset.SetValue(u"A", value);
    recordset.Update();
  }
  recordset.SetFilter(u"A like 'ab%'");
  return recordset.RecordCount() == 1 && ToText(recordset.Value(u"A")) == u"abc";
}

}  // namespace

AutomationObject AdoRecordset::Field(TextView name) const {
  return recordset_.GetChild(L"Fields").GetChild(L"Item", {Variant(name)});
}

void AdoRecordset::AppendField(TextView name, FieldType type, std::int32_t size, std::int32_t attributes) {
  recordset_.GetChild(L"Fields").Call(L"Append", {Variant(name), Variant(static_cast<std::int32_t>(type)),
                                                  Variant(size), Variant(attributes)});
}

void AdoRecordset::Open() {
  recordset_.Put(L"CursorLocation", Variant(kClientCursor));
  recordset_.Call(L"Open");
}

void AdoRecordset::AddNew() {
  recordset_.Call(L"AddNew");
}

void AdoRecordset::SetValue(TextView field, const CellValue& value) {
  Field(field).Put(L"Value", ToVariant(value));
}

void AdoRecordset::Update() {
  recordset_.Call(L"Update");
}

void AdoRecordset::SetFilter(TextView filter) {
  recordset_.Put(L"Filter", Variant(filter));
}

std::int32_t AdoRecordset::RecordCount() const {
  return recordset_.Get(L"RecordCount").ToLong();
}

bool AdoRecordset::Bof() const {
  return recordset_.Get(L"BOF").ToBool();
}

bool AdoRecordset::Eof() const {
  return recordset_.Get(L"EOF").ToBool();
}

void AdoRecordset::MoveFirst() {
  recordset_.Call(L"MoveFirst");
}

void AdoRecordset::MoveNext() {
  recordset_.Call(L"MoveNext");
}

CellValue AdoRecordset::Value(TextView field) const {
  return ToCellValue(Field(field).Get(L"Value").get());
}

void AdoRecordset::Close() {
  recordset_.Call(L"Close");
}

bool AdoRecordsets::Works() const {
  try {
    AdoRecordset probe(make_());
    const bool works = FiltersText(probe);
    probe.Close();
    Log("Recordset", works ? "the data-access library" : "in memory: the library does not filter text");
    return works;
  } catch (const RuntimeError& error) {
    Log("Recordset", std::string("in memory: ") + error.what());
    return false;
  }
}

std::unique_ptr<Recordset> AdoRecordsets::Create() {
  if (!works_) works_ = Works();
  if (!*works_) return substitute_.Create();
  return std::make_unique<AdoRecordset>(make_());
}

AutomationObject MakeAdoRecordset() {
  CLSID clsid{};
  ThrowIfFailed(CLSIDFromProgID(L"ADODB.Recordset", &clsid));
  ComPtr<IDispatch> recordset;
  ThrowIfFailed(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                 reinterpret_cast<void**>(recordset.Receive())));
  return AutomationObject(recordset);
}

}  // namespace quorvel
