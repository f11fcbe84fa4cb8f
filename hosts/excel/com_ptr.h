#pragma once

#include <utility>

#include "hosts/excel/win32.h"

namespace quorvel {

// Shares in the ownership of a COM object: holds one reference to it.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  // Takes a reference of its own.
  explicit ComPtr(T* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_ != nullptr) object_->Release();
  }

  // Takes over the caller's reference.
  [[nodiscard]] static ComPtr Adopt(T* object) {
    ComPtr adopted;
    adopted.object_ = object;
    return adopted;
  }

  [[nodiscard]] T* get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  // For an out-parameter; what was held is released.
  [[nodiscard]] T** Receive() {
    *this = ComPtr();
    return &object_;
  }
  // Hands the reference to the caller.
  [[nodiscard]] T* Detach() { return std::exchange(object_, nullptr); }

  // Null when the object does not have the interface.
  template <class Interface>
  [[nodiscard]] ComPtr<Interface> As(REFIID iid) const {
    ComPtr<Interface> other;
    if (object_ != nullptr) object_->QueryInterface(iid, reinterpret_cast<void**>(other.Receive()));
    return other;
  }

 private:
  T* object_ = nullptr;
};

}  // namespace quorvel
