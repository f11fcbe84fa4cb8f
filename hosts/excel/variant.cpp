#include "hosts/excel/variant.h"

#include <new>

#include "hosts/excel/automation_error.h"
#include "hosts/excel/wide.h"

namespace quorvel {

namespace {

constexpr SCODE kCellErrors = static_cast<SCODE>(0x800A0000);

Variant Converted(const VARIANT& value, VARTYPE type) {
  Variant converted;
  ThrowIfFailed(VariantChangeTypeEx(converted.Receive(), const_cast<VARIANT*>(&value), kEnglish,
                                    VARIANT_ALPHABOOL, type));
  return converted;
}

Text TextOf(BSTR text) {
  return text == nullptr ? Text() : FromWide({text, SysStringLen(text)});
}

}  // namespace

Variant::Variant(std::int32_t number) : Variant() {
  value_.vt = VT_I4;
  value_.lVal = number;
}

Variant::Variant(double number) : Variant() {
  value_.vt = VT_R8;
  value_.dblVal = number;
}

Variant::Variant(bool flag) : Variant() {
  value_.vt = VT_BOOL;
  value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(TextView text) : Variant() {
  value_.bstrVal = SysAllocStringLen(Wide(Text(text)), static_cast<UINT>(text.size()));
  if (value_.bstrVal == nullptr) throw std::bad_alloc();
  value_.vt = VT_BSTR;
}

Variant::Variant(Date date) : Variant() {
  value_.vt = VT_DATE;
  value_.date = date.serial;
}

Variant::Variant(const ComPtr<IDispatch>& object) : Variant() {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = ComPtr<IDispatch>(object).Detach();
}

Variant::Variant(const VARIANT& value) : Variant() {
  ThrowIfFailed(VariantCopyInd(&value_, const_cast<VARIANT*>(&value)));
}

Variant Variant::Missing() {
  Variant missing;
  missing.value_.vt = VT_ERROR;
  missing.value_.scode = DISP_E_PARAMNOTFOUND;
  return missing;
}

Variant Variant::Error(std::int32_t number) {
  Variant error;
  error.value_.vt = VT_ERROR;
  error.value_.scode = kCellErrors + number;
  return error;
}

VARIANT* Variant::Receive() {
  VariantClear(&value_);
  return &value_;
}

VARIANT Variant::Detach() {
  const VARIANT detached = value_;
  VariantInit(&value_);
  return detached;
}

std::int32_t Variant::ToLong() const {
  return Converted(value_, VT_I4).value_.lVal;
}

bool Variant::ToBool() const {
  return Converted(value_, VT_BOOL).value_.boolVal != VARIANT_FALSE;
}

Text Variant::ToText() const {
  return TextOf(Converted(value_, VT_BSTR).value_.bstrVal);
}

ComPtr<IDispatch> Variant::ToObject() const {
  if (value_.vt == VT_EMPTY) return {};
  if (value_.vt != VT_DISPATCH && value_.vt != VT_UNKNOWN) throw RuntimeError(424, u"Object required");
  return ComPtr<IUnknown>(value_.punkVal).As<IDispatch>(IID_IDispatch);
}

CellValue ToCellValue(const VARIANT& value) {
  if ((value.vt & VT_BYREF) != 0) return ToCellValue(Variant(value).get());
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BSTR:
      return TextOf(value.bstrVal);
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_DATE:
      return Date{value.date};
    case VT_ERROR:
      return CellError{value.scode & 0xFFFF};
    case VT_DISPATCH:  // would be asked for its default property
      throw TypeMismatch();
    default:
      return Converted(value, VT_R8).get().dblVal;
  }
}

Variant ToVariant(const CellValue& value) {
  struct Maker {
    Variant operator()(std::monostate) const { return {}; }
    Variant operator()(double number) const { return Variant(number); }
    Variant operator()(const Text& text) const { return Variant(text); }
    Variant operator()(bool flag) const { return Variant(flag); }
    Variant operator()(Date date) const { return Variant(date); }
    Variant operator()(CellError error) const { return Variant::Error(error.number); }
  };
  return std::visit(Maker(), value);
}

}  // namespace quorvel
