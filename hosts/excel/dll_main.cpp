// The DLL's entry points.

#include <string>

#include "hosts/excel/class_factory.h"
#include "hosts/excel/com_boundary.h"
#include "hosts/excel/com_ptr.h"
#include "hosts/excel/registration.h"
#include "hosts/excel/wide.h"
#include "hosts/excel/window_scope.h"

namespace {

constexpr std::size_t kLongestPath = 32768;

quorvel::Text PathOfThisDll() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(quorvel::ThisModule(), path.data(), static_cast<DWORD>(path.size())));
  return quorvel::FromWide(path);
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualCLSID(clsid, quorvel::kConnectClass)) return CLASS_E_CLASSNOTAVAILABLE;
  return quorvel::Guarded("DllGetClassObject", [&] {
    const auto factory = quorvel::ComPtr<quorvel::ClassFactory>::Adopt(new quorvel::ClassFactory);
    return factory->QueryInterface(iid, object);
  });
}

STDAPI DllCanUnloadNow() {
  return quorvel::Module::InUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return quorvel::Guarded("DllRegisterServer", [] { return quorvel::Register(PathOfThisDll()); });
}

STDAPI DllUnregisterServer() {
  return quorvel::Guarded("DllUnregisterServer", [] { return quorvel::Unregister(); });
}
