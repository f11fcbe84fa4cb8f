#pragma once

#include <initializer_list>
#include <optional>
#include <string_view>

#include "hosts/excel/com_ptr.h"
#include "hosts/excel/variant.h"

namespace quorvel {

// A member of objects that are all of one class: its number is asked for once, at the first of them.
class Member {
 public:
  explicit Member(std::wstring_view name) : name_(name) {}

 private:
  friend class AutomationObject;
  std::wstring_view name_;
  std::optional<DISPID> id_;
};

// A late-bound object of the host: its members are called by name, as a macro would call them, with arguments
// in the order of the object model's documentation. Every failure is a RuntimeError (automation_error.h); so
// is any call on Nothing (91).
class AutomationObject {
 public:
  using Arguments = std::initializer_list<Variant>;

  AutomationObject() = default;
  explicit AutomationObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  [[nodiscard]] Variant Get(std::wstring_view member, Arguments arguments = {}) const;
  [[nodiscard]] Variant Get(Member& member, Arguments arguments = {}) const;
  // The object that a property holds or a function returns; may be Nothing.
  [[nodiscard]] AutomationObject GetChild(std::wstring_view member, Arguments arguments = {}) const;
  void Put(std::wstring_view member, const Variant& value) const;
  Variant Call(std::wstring_view member, Arguments arguments = {}) const;

  [[nodiscard]] bool Has(std::wstring_view member) const;
  [[nodiscard]] bool IsNothing() const { return !object_; }
  [[nodiscard]] const ComPtr<IDispatch>& get() const { return object_; }

 private:
  [[nodiscard]] DISPID Find(std::wstring_view member) const;
  Variant Invoke(DISPID member, WORD kind, DISPPARAMS& parameters) const;
  Variant InvokeWith(DISPID member, WORD kind, Arguments arguments) const;

  ComPtr<IDispatch> object_;
};

}  // namespace quorvel
