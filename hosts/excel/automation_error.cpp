#include "hosts/excel/automation_error.h"

#include <algorithm>
#include <array>

#include "hosts/excel/wide.h"

namespace quorvel {

namespace {

constexpr HRESULT kRuntimeErrors = static_cast<HRESULT>(0x800A0000);
constexpr HRESULT kHostBusy = static_cast<HRESULT>(0x800AC472);

struct KnownResult {
  HRESULT result;
  int number;
  TextView description;
};

constexpr TextView kBusyText =
    u"The application is busy. Finish editing the cell or close its dialog, then try again.";

constexpr std::array kKnownResults = {
    KnownResult{DISP_E_MEMBERNOTFOUND, 438, u"Object doesn't support this property or method"},
    KnownResult{DISP_E_UNKNOWNNAME, 438, u"Object doesn't support this property or method"},
    KnownResult{DISP_E_BADPARAMCOUNT, 450, u"Wrong number of arguments or invalid property assignment"},
    KnownResult{DISP_E_TYPEMISMATCH, 13, u"Type mismatch"},
    KnownResult{DISP_E_OVERFLOW, 6, u"Overflow"},
    KnownResult{DISP_E_BADINDEX, 9, u"Subscript out of range"},
    KnownResult{E_INVALIDARG, 5, u"Invalid procedure call or argument"},
    KnownResult{E_OUTOFMEMORY, 7, u"Out of memory"},
    KnownResult{REGDB_E_CLASSNOTREG, 429, u"ActiveX component can't create object"},
    KnownResult{kHostBusy, 0xC472, kBusyText},
    KnownResult{RPC_E_CALL_REJECTED, static_cast<int>(RPC_E_CALL_REJECTED), kBusyText},
};

Text SystemText(HRESULT result) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      static_cast<DWORD>(result), 0, buffer.data(),
                                      static_cast<DWORD>(buffer.size()), nullptr);
  Text text = FromWide({buffer.data(), length});
  while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n')) text.pop_back();
  return text.empty() ? Text(u"Automation error") : text;
}

Text TakeText(BSTR& text) {
  Text taken = text == nullptr ? Text() : FromWide({text, SysStringLen(text)});
  SysFreeString(text);
  text = nullptr;
  return taken;
}

}  // namespace

RuntimeError ErrorOfResult(HRESULT result) {
  const auto known = std::find_if(kKnownResults.begin(), kKnownResults.end(),
                                  [&](const KnownResult& row) { return row.result == result; });
  if (known != kKnownResults.end()) return {known->number, Text(known->description)};
  if ((result & static_cast<HRESULT>(0xFFFF0000)) == kRuntimeErrors) {
    return {result & 0xFFFF, u"Application-defined or object-defined error"};
  }
  return {static_cast<int>(result), SystemText(result)};
}

RuntimeError ErrorOfCall(HRESULT result, EXCEPINFO& raised) {
  if (result != DISP_E_EXCEPTION) return ErrorOfResult(result);
  if (raised.pfnDeferredFillIn != nullptr) raised.pfnDeferredFillIn(&raised);
  const Text description = TakeText(raised.bstrDescription);
  TakeText(raised.bstrSource);
  TakeText(raised.bstrHelpFile);
  const RuntimeError error =
      raised.scode != 0 ? ErrorOfResult(raised.scode) : ErrorOfResult(kRuntimeErrors + raised.wCode);
  return description.empty() ? error : RuntimeError(error.number(), description);
}

HRESULT ResultOfError(int number) {
  return number > 0 && number <= 0xFFFF ? kRuntimeErrors + number : static_cast<HRESULT>(number);
}

void ThrowIfFailed(HRESULT result) {
  if (FAILED(result)) throw ErrorOfResult(result);
}

}  // namespace quorvel
