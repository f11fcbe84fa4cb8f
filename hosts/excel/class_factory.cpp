#include "hosts/excel/class_factory.h"

#include "hosts/excel/addin_object.h"
#include "hosts/excel/com_boundary.h"
#include "hosts/excel/com_ptr.h"

namespace quorvel {

void* ClassFactory::Find(REFIID iid) {
  return IsEqualIID(iid, IID_IClassFactory) ? static_cast<IClassFactory*>(this) : nullptr;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return Guarded("CreateInstance", [&] {
    const auto addin = ComPtr<AddinObject>::Adopt(new AddinObject);
    return addin->QueryInterface(iid, object);
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  lock != FALSE ? Module::Add() : Module::Release();
  return S_OK;
}

}  // namespace quorvel
