#include "hosts/excel/dispatch.h"

#include <array>
#include <string>

#include "hosts/excel/automation_error.h"

namespace quorvel {

namespace {

constexpr std::size_t kMostArguments = 8;

DISPID TryFind(IDispatch* object, std::wstring_view member, HRESULT& result) {
  std::wstring name(member);
  wchar_t* names = name.data();
  DISPID id = DISPID_UNKNOWN;
  result = object->GetIDsOfNames(IID_NULL, &names, 1, kEnglish, &id);
  return id;
}

}  // namespace

DISPID AutomationObject::Find(std::wstring_view member) const {
  if (!object_) throw ObjectNotSet();
  HRESULT result = S_OK;
  const DISPID id = TryFind(object_.get(), member, result);
  ThrowIfFailed(result);
  return id;
}

bool AutomationObject::Has(std::wstring_view member) const {
  if (!object_) throw ObjectNotSet();
  HRESULT result = S_OK;
  TryFind(object_.get(), member, result);
  return SUCCEEDED(result);
}

Variant AutomationObject::Invoke(DISPID member, WORD kind, DISPPARAMS& parameters) const {
  if (!object_) throw ObjectNotSet();
  Variant answer;
  EXCEPINFO raised{};
  UINT wrong_argument = 0;
  const HRESULT result = object_->Invoke(member, IID_NULL, kEnglish, kind, &parameters, answer.Receive(),
                                         &raised, &wrong_argument);
  if (FAILED(result)) throw ErrorOfCall(result, raised);
  return answer;
}

Variant AutomationObject::InvokeWith(DISPID member, WORD kind, Arguments arguments) const {
  // Last argument first; the variants stay the caller's.
  std::array<VARIANT, kMostArguments> reversed{};
  if (arguments.size() > reversed.size()) throw InvalidCall();
  std::size_t slot = arguments.size();
  for (const Variant& argument : arguments) reversed[--slot] = argument.get();
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  return Invoke(member, kind, parameters);
}

Variant AutomationObject::Get(std::wstring_view member, Arguments arguments) const {
  return InvokeWith(Find(member), DISPATCH_PROPERTYGET | DISPATCH_METHOD, arguments);
}

Variant AutomationObject::Get(Member& member, Arguments arguments) const {
  if (!member.id_) member.id_ = Find(member.name_);
  return InvokeWith(*member.id_, DISPATCH_PROPERTYGET | DISPATCH_METHOD, arguments);
}

AutomationObject AutomationObject::GetChild(std::wstring_view member, Arguments arguments) const {
  return AutomationObject(Get(member, arguments).ToObject());
}

Variant AutomationObject::Call(std::wstring_view member, Arguments arguments) const {
  return InvokeWith(Find(member), DISPATCH_METHOD, arguments);
}

void AutomationObject::Put(std::wstring_view member, const Variant& value) const {
  VARIANT argument = value.get();
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&argument, &named, 1, 1};
  Invoke(Find(member), DISPATCH_PROPERTYPUT, parameters);
}

}  // namespace quorvel
