// The data-access library's recordset by late binding, and the choice between it and the one in memory. The
// library's part is played by an automation object in front of the memory recordset.

#include <gtest/gtest.h>

#include "hosts/excel/ado_recordset.h"
#include "platform/memory/fixed_clock.h"
#include "platform/memory/memory_recordset.h"
#include "platform/runtime_error.h"
#include "tests/excel/automation.h"

namespace quorvel::tests {
namespace {

class FieldObject : public Automation {
 public:
  FieldObject(const std::shared_ptr<Recordset>& records, const Text& name) {
    AddProperty(
        L"Value", [records, name](const Arguments&) { return ToVariant(records->Value(name)); },
        [records, name](const Variant& value) { records->SetValue(name, ToCellValue(value.get())); });
  }
};

class FieldsObject : public Automation {
 public:
  explicit FieldsObject(const std::shared_ptr<Recordset>& records) {
    AddProperty(L"Item", [records](const Arguments& arguments) {
      return NewObject<FieldObject>(records, arguments[0].ToText());
    });
    AddFunction(L"Append", [records](const Arguments& arguments) {
      records->AppendField(arguments[0].ToText(), static_cast<FieldType>(arguments[1].ToLong()),
                           arguments[2].ToLong(), arguments[3].ToLong());
      return Variant();
    });
  }
};

class RecordsetObject : public Automation {
 public:
  explicit RecordsetObject(std::shared_ptr<Recordset> records, std::int32_t& cursor_location)
      : records_(std::move(records)) {
    AddProperty(L"Fields", [this](const Arguments&) { return NewObject<FieldsObject>(records_); });
    AddProperty(
        L"CursorLocation", [&cursor_location](const Arguments&) { return Variant(cursor_location); },
        [&cursor_location](const Variant& value) { cursor_location = value.ToLong(); });
    AddProperty(
        L"Filter", [](const Arguments&) { return Variant(); },
        [this](const Variant& filter) { records_->SetFilter(filter.ToText()); });
    AddProperty(L"RecordCount", [this](const Arguments&) { return Variant(records_->RecordCount()); });
    AddProperty(L"BOF", [this](const Arguments&) { return Variant(records_->Bof()); });
    AddProperty(L"EOF", [this](const Arguments&) { return Variant(records_->Eof()); });
    AddAction(L"Open", &Recordset::Open);
    AddAction(L"AddNew", &Recordset::AddNew);
    AddAction(L"Update", &Recordset::Update);
    AddAction(L"MoveFirst", &Recordset::MoveFirst);
    AddAction(L"MoveNext", &Recordset::MoveNext);
    AddAction(L"Close", &Recordset::Close);
  }

 private:
  void AddAction(std::wstring_view name, void (Recordset::*action)()) {
    AddFunction(name, [this, action](const Arguments&) {
      (records_.get()->*action)();
      return Variant();
    });
  }

  std::shared_ptr<Recordset> records_;
};

class AdoRecordsetTest : public testing::Test {
 protected:
  AutomationObject Make() {
    ++made_;
    std::shared_ptr<Recordset> records = memory_.Create();
    return AutomationObject(NewObject<RecordsetObject>(std::move(records), cursor_location_).ToObject());
  }

  FixedClock clock_{{2024, 1, 2, 15, 4, 0}};
  MemoryRecordsets memory_{clock_};
  std::int32_t cursor_location_ = 0;
  int made_ = 0;
};

TEST_F(AdoRecordsetTest, WalksTheRecordsThatAFilterLeaves) {
  AdoRecordsets factory(memory_, [this] { return Make(); });
  const auto records = factory.Create();
  EXPECT_EQ(made_, 2) << "one to find out, one to use";
  EXPECT_EQ(cursor_location_, 3);
  records->AppendField(u"C", FieldType::kVarChar, 20, -1);
  records->AppendField(u"FC_B", FieldType::kInteger, 15, -1);
  records->Open();
  for (const double number : {5.0, 12.0, 20.0}) {
    records->AddNew();
    records->SetValue(u"C", ToText(CellValue(number)));
    records->SetValue(u"FC_B", number);
    records->Update();
  }
  records->SetFilter(u"FC_B > 10");
  EXPECT_EQ(records->RecordCount(), 2);
  Text numbers;
  for (records->MoveFirst(); !records->Eof(); records->MoveNext())
    numbers += ToText(records->Value(u"C")) + u";";
  EXPECT_EQ(numbers, u"12;20;");
  try {
    records->SetFilter(u"#Q# > 1");
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 3001);
  }
  records->Close();
  static_cast<void>(factory.Create());
  EXPECT_EQ(made_, 3) << "found out once";
}

TEST_F(AdoRecordsetTest, WithoutTheLibraryRecordsAreKeptInMemory) {
  AdoRecordsets factory(memory_, []() -> AutomationObject { throw RuntimeError(429, u"no such class"); });
  EXPECT_NE(dynamic_cast<MemoryRecordset*>(factory.Create().get()), nullptr);
}

}  // namespace
}  // namespace quorvel::tests
