#pragma once

#include "hosts/excel/com_object.h"

namespace quorvel {

// Makes add-in objects.
class ClassFactory : public ComObject<IClassFactory> {
 public:
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 protected:
  void* Find(REFIID iid) override;
};

}  // namespace quorvel
