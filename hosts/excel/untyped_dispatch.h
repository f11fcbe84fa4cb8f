#pragma once

#include "hosts/excel/com_object.h"

namespace quorvel {

// A COM object with IDispatch that has no type information: callers ask for its members by name. The first
// interface is IDispatch or derives from it.
template <class First, class... More>
class UntypedDispatch : public ComObject<First, More...> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) final {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
  }
};

}  // namespace quorvel
