#include "hosts/excel/registration.h"

#include <array>

#include "hosts/excel/registry_key.h"
#include "hosts/excel/wide.h"

namespace quorvel {

namespace {

constexpr TextView kClasses = uR"(Software\Classes\)";
constexpr TextView kAddIns = uR"(Software\Microsoft\Office\Excel\Addins\)";
constexpr TextView kFriendlyName = u"Quorvel AddIn";
constexpr TextView kDescription =
    u"This AddIn will provide an easiest way of sending SMS to mobile number available in Excel Sheet with quick customized way.";
constexpr std::uint32_t kLoadAtStartUp = 3;

Text ClassId() {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(kConnectClass, text.data(), static_cast<int>(text.size()));
  return FromWide(text.data());
}

Text ClassKey() {
  return Text(kClasses) + u"CLSID\\" + ClassId();
}

Text ProgramIdKey() {
  return Text(kClasses) + Text(kProgramId);
}

Text AddInKey() {
  return Text(kAddIns) + Text(kProgramId);
}

struct Entry {
  Text key;
  Text name;  // empty for the key's default value
  Text value;
};

LSTATUS WriteEntries(const Text& path) {
  const Text server = ClassKey() + u"\\InprocServer32";
  const std::array entries = {
      Entry{ClassKey(), u"", u"Connect"},
      Entry{server, u"", path},
      Entry{server, u"ThreadingModel", u"Apartment"},
      Entry{ClassKey() + u"\\ProgID", u"", Text(kProgramId)},
      Entry{ProgramIdKey(), u"", u"Connect"},
      Entry{ProgramIdKey() + u"\\CLSID", u"", ClassId()},
      Entry{AddInKey(), u"FriendlyName", Text(kFriendlyName)},
      Entry{AddInKey(), u"Description", Text(kDescription)},
  };
  for (const Entry& entry : entries) {
    const LSTATUS status = WriteRegistryText(HKEY_CURRENT_USER, entry.key, entry.name, entry.value);
    if (status != ERROR_SUCCESS) return status;
  }
  return WriteRegistryNumber(HKEY_CURRENT_USER, AddInKey(), u"LoadBehavior", kLoadAtStartUp);
}

}  // namespace

HRESULT Register(const Text& path) {
  const LSTATUS status = WriteEntries(path);
  if (status == ERROR_SUCCESS) return S_OK;
  static_cast<void>(Unregister());  // the first failure is the one to report
  return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

HRESULT Unregister() {
  LSTATUS result = ERROR_SUCCESS;
  for (const Text& key : {AddInKey(), ProgramIdKey(), ClassKey()}) {
    const LSTATUS status = DeleteRegistryKey(HKEY_CURRENT_USER, key);
    if (status != ERROR_SUCCESS) result = status;
  }
  return HRESULT_FROM_WIN32(static_cast<DWORD>(result));
}

}  // namespace quorvel
