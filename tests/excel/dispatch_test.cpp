// Late-bound calls: argument order, values of every kind, and failures as the language runtime numbers them.

#include "hosts/excel/dispatch.h"

#include <gtest/gtest.h>

#include "hosts/excel/automation_error.h"
#include "tests/excel/automation.h"
#include "tests/platform/expect_error.h"

namespace quorvel::tests {
namespace {

class Calculator : public Automation {
 public:
  Calculator() {
    AddFunction(L"Subtract", [](const Arguments& arguments) {
      const std::int32_t right = arguments.Has(1) ? arguments[1].ToLong() : 1;
      return Variant(arguments[0].ToLong() - right);
    });
    AddProperty(
        L"Memory", [this](const Arguments&) { return memory_; },
        [this](const Variant& value) { memory_ = value; });
    AddProperty(L"Self", [this](const Arguments&) { return Variant(ComPtr<IDispatch>(this)); });
    AddProperty(L"None", [](const Arguments&) { return Nothing(); });
    AddFunction(L"Fail", [](const Arguments& arguments) -> Variant {
      throw RuntimeError(arguments[0].ToLong(), u"as it says");
    });
  }

 private:
  Variant memory_;
};

class DispatchTest : public testing::Test {
 protected:
  void TearDown() override { Automation::rejection = S_OK; }

  AutomationObject object_{ComPtr<IDispatch>::Adopt(new Calculator)};
};

TEST_F(DispatchTest, ArgumentsArriveInOrderAndMayBeLeftOut) {
  EXPECT_EQ(object_.Call(L"Subtract", {Variant(7), Variant(3)}).ToLong(), 4);
  EXPECT_EQ(object_.Call(L"subtract", {Variant(7), Variant::Missing()}).ToLong(), 6);
  EXPECT_EQ(object_.GetChild(L"Self").GetChild(L"Self").Get(L"Subtract", {Variant(1)}).ToLong(), 0);
}

TEST_F(DispatchTest, EveryKindOfCellValueMakesTheRoundTrip) {
  const std::vector<CellValue> values = {CellValue(), 447700900123.0, Text(u"007 \u20AC \u05D0"),
                                         true,        Date{45293.5},  CellError{2042}};
  for (const CellValue& value : values) {
    object_.Put(L"Memory", ToVariant(value));
    EXPECT_EQ(ToCellValue(object_.Get(L"Memory").get()), value) << value.index();
  }
}

TEST_F(DispatchTest, NumbersOfTheHostsOwnKindsAreNumbersAndNullIsEmpty) {
  VARIANT value{};
  value.vt = VT_CY;
  value.cyVal.int64 = 12345;  // ten-thousandths
  EXPECT_EQ(ToCellValue(value), CellValue(1.2345));
  value.vt = VT_I2;
  value.iVal = -5;
  EXPECT_EQ(ToCellValue(value), CellValue(-5.0));
  value.vt = VT_NULL;
  EXPECT_EQ(ToCellValue(value), CellValue());
  double number = 2.5;
  value.vt = VT_R8 | VT_BYREF;
  value.pdblVal = &number;
  EXPECT_EQ(ToCellValue(value), CellValue(2.5));
  value.vt = VT_DISPATCH;
  value.pdispVal = nullptr;
  EXPECT_EQ(ErrorOf([&] { return ToCellValue(value); }), 13);
}

TEST_F(DispatchTest, FailuresHaveTheRuntimesNumbers) {
  EXPECT_EQ(ErrorOf([&] { return object_.Call(L"Missing"); }), 438);
  EXPECT_EQ(ErrorOf([&] { object_.Put(L"Self", Variant(1)); }), 438);
  EXPECT_EQ(ErrorOf([&] { return object_.Call(L"Fail", {Variant(1004)}); }), 1004);
  EXPECT_EQ(ErrorOf([&] { return object_.Call(L"Fail", {Variant(-2147217887)}); }), -2147217887);
  EXPECT_EQ(ErrorOf([&] { return object_.Call(L"Fail", {Variant(5)}); }), 5);
  EXPECT_EQ(ErrorOf([&] { return object_.GetChild(L"None").Call(L"Anything"); }), 91);
  EXPECT_EQ(ErrorOf([&] { return object_.GetChild(L"Memory").Call(L"Anything"); }), 91);
  object_.Put(L"Memory", Variant(1));
  EXPECT_EQ(ErrorOf([&] { return object_.GetChild(L"Memory"); }), 424);
  Automation::rejection = static_cast<HRESULT>(0x800AC472);
  EXPECT_EQ(ErrorOf([&] { return object_.Call(L"Subtract", {Variant(7)}); }), 50290);
}

TEST_F(DispatchTest, ARaisedErrorKeepsItsOwnWords) {
  try {
    object_.Call(L"Fail", {Variant(1004)});
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.description(), u"as it says");
  }
}

}  // namespace
}  // namespace quorvel::tests
