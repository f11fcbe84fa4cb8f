#include "tests/excel/automation.h"

#include <algorithm>

#include "hosts/excel/automation_error.h"
#include "hosts/excel/wide.h"
#include "platform/runtime_error.h"

namespace quorvel::tests {

namespace {

bool SameName(const std::wstring& left, const wchar_t* right) {
  return CompareStringOrdinal(left.c_str(), -1, right, -1, TRUE) == CSTR_EQUAL;
}

BSTR MakeBstr(TextView text) {
  return Variant(text).Detach().bstrVal;
}

}  // namespace

void Refuse(TextView description) {
  throw RuntimeError(1004, Text(description));
}

Automation::Arguments::Arguments(const DISPPARAMS& parameters) {
  for (UINT index = parameters.cArgs; index-- > 0;) {
    const VARIANT& argument = parameters.rgvarg[index];
    const bool missing = argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
    values_.push_back(missing ? Variant() : Variant(argument));
  }
}

bool Automation::Arguments::Has(std::size_t index) const {
  return index < values_.size() && values_[index].get().vt != VT_EMPTY;
}

void Automation::AddFunction(std::wstring_view name, Function function) {
  members_.push_back({std::wstring(name), std::move(function), nullptr});
}

void Automation::AddProperty(std::wstring_view name, Function get, Setter put) {
  members_.push_back({std::wstring(name), std::move(get), std::move(put)});
}

void* Automation::Find(REFIID iid) {
  if (IsEqualIID(iid, IID_IDispatch)) return static_cast<IDispatch*>(this);
  if (IsEqualIID(iid, IID_IConnectionPointContainer)) return static_cast<IConnectionPointContainer*>(this);
  return nullptr;
}

HRESULT Automation::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                  DISPID* ids) {
  const auto found = std::find_if(members_.begin(), members_.end(),
                                  [&](const Member& member) { return SameName(member.name, names[0]); });
  ids[0] = found == members_.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - members_.begin() + 1);
  return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

Variant Automation::Call(const Member& member, WORD kind, const DISPPARAMS& parameters) const {
  if ((kind & DISPATCH_PROPERTYPUT) == 0) return member.get(Arguments(parameters));
  if (!member.put) throw RuntimeError(438, u"Object doesn't support this property or method");
  member.put(Variant(parameters.rgvarg[0]));
  return {};
}

HRESULT Automation::Invoke(DISPID member, REFIID /*reserved*/, LCID locale, WORD kind, DISPPARAMS* arguments,
                           VARIANT* answer, EXCEPINFO* raised, UINT* /*wrong_argument*/) {
  if (rejection != S_OK && --accepted < 0) return rejection;
  if (PRIMARYLANGID(locale) != LANG_ENGLISH) return TYPE_E_UNSUPFORMAT;
  if (member < 1 || member > static_cast<DISPID>(members_.size())) return DISP_E_MEMBERNOTFOUND;
  const ComPtr<Automation> keep(this);
  try {
    Variant result = Call(members_[static_cast<std::size_t>(member - 1)], kind, *arguments);
    if (answer != nullptr) *answer = result.Detach();
    return S_OK;
  } catch (const RuntimeError& error) {
    if (error.number() == 5) return E_INVALIDARG;
    *raised = {};
    raised->scode = ResultOfError(error.number());
    raised->bstrSource = MakeBstr(u"Stand-in");
    raised->bstrDescription = MakeBstr(error.description());
    return DISP_E_EXCEPTION;
  }
}

HRESULT Automation::EnumConnectionPoints(IEnumConnectionPoints** /*points*/) {
  return E_NOTIMPL;
}

HRESULT Automation::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  *point = ConnectionPoint(iid);
  return *point == nullptr ? CONNECT_E_NOCONNECTION : S_OK;
}

}  // namespace quorvel::tests
