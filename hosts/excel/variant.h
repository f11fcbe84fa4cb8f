#pragma once

#include <cstdint>

#include "hosts/excel/com_ptr.h"
#include "hosts/excel/win32.h"
#include "platform/cell_value.h"
#include "platform/text.h"

namespace quorvel {

// The locale that a macro calls in, whatever the user's region: in another one Excel reads texts by that
// locale, and may refuse with "Old format or invalid type library" where it has no resources for it.
inline constexpr LCID kEnglish = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

// A value of the automation interfaces; owns what it refers to.
class Variant {
 public:
  Variant() noexcept = default;
  explicit Variant(std::int32_t number);
  explicit Variant(double number);
  explicit Variant(bool flag);
  explicit Variant(TextView text);  // throws std::bad_alloc
  explicit Variant(Date date);
  explicit Variant(const ComPtr<IDispatch>& object);
  // A deep copy; throws RuntimeError when it fails.
  explicit Variant(const VARIANT& value);
  Variant(const Variant& other) : Variant(other.value_) {}
  Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }
  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { VariantClear(&value_); }

  // An argument that is left out.
  [[nodiscard]] static Variant Missing();
  // A cell's error value.
  [[nodiscard]] static Variant Error(std::int32_t number);

  [[nodiscard]] const VARIANT& get() const { return value_; }
  // For an out-parameter; what was held is freed.
  [[nodiscard]] VARIANT* Receive();
  [[nodiscard]] VARIANT Detach();

  // Conversions as the language runtime makes them. Throw RuntimeError 13 (Type mismatch) or 6 (Overflow).
  [[nodiscard]] std::int32_t ToLong() const;
  [[nodiscard]] bool ToBool() const;
  [[nodiscard]] Text ToText() const;
  // Null for Nothing; throws RuntimeError 424 (Object required) when it is no object.
  [[nodiscard]] ComPtr<IDispatch> ToObject() const;

 private:
  VARIANT value_{};  // of all zeros: empty
};

// A cell's value as the host hands it out: every kind of number, currency included, is a number; Null is
// empty; an error value keeps the number that the host documents. Throws TypeMismatch for an array or an
// object.
[[nodiscard]] CellValue ToCellValue(const VARIANT& value);
[[nodiscard]] Variant ToVariant(const CellValue& value);

}  // namespace quorvel
