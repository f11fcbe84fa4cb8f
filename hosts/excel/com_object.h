#pragma once

#include <atomic>

#include "hosts/excel/win32.h"

namespace quorvel {

// What keeps the DLL from being unloaded: living objects and the class factory's locks.
class Module {
 public:
  static void Add() { ++uses; }
  static void Release() { --uses; }
  [[nodiscard]] static bool InUse() { return uses != 0; }

 private:
  static inline std::atomic<long> uses = 0;
};

// Reference counting for the COM objects that are implemented here. `Interfaces` are COM interfaces; the
// first one answers for IUnknown. Objects are made with one reference, which belongs to the maker.
template <class First, class... More>
class ComObject : public First, public More... {
 public:
  ComObject() { Module::Add(); }
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;
  virtual ~ComObject() { Module::Release(); }

  ULONG STDMETHODCALLTYPE AddRef() final { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() final {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) final {
    if (object == nullptr) return E_POINTER;
    *object = IsEqualIID(iid, IID_IUnknown) ? static_cast<First*>(this) : Find(iid);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

 protected:
  // The interface of that id, null when there is none. IUnknown is seen to already.
  virtual void* Find(REFIID iid) = 0;

 private:
  std::atomic<ULONG> references_ = 1;
};

}  // namespace quorvel
