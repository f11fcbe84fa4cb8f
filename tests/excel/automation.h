#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "hosts/excel/untyped_dispatch.h"
#include "hosts/excel/variant.h"

namespace quorvel::tests {

// An object of the stand-in application: members by name, called late bound. A member that throws
// RuntimeError raises it as the application does, by an exception with result code 0x800A0000 plus its
// number.
class Automation : public UntypedDispatch<IDispatch, IConnectionPointContainer> {
 public:
  // The arguments of one call, in order; those that were left out are empty.
  class Arguments {
   public:
    explicit Arguments(const DISPPARAMS& parameters);
    [[nodiscard]] bool Has(std::size_t index) const;
    [[nodiscard]] const Variant& operator[](std::size_t index) const { return values_.at(index); }

   private:
    std::vector<Variant> values_;
  };

  using Function = std::function<Variant(const Arguments&)>;
  using Setter = std::function<void(const Variant&)>;

  // The result code of calls that the application turns down as a whole, such as 0x800AC472 while a cell is
  // being edited; S_OK for none. The first `accepted` calls go through all the same.
  static inline HRESULT rejection = S_OK;
  static inline int accepted = 0;
  // The objects that exist.
  static inline int living = 0;

  Automation() { ++living; }
  ~Automation() override { --living; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD kind,
                                   DISPPARAMS* arguments, VARIANT* answer, EXCEPINFO* raised,
                                   UINT* wrong_argument) override;
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

 protected:
  void AddFunction(std::wstring_view name, Function function);
  // Read-only without a setter.
  void AddProperty(std::wstring_view name, Function get, Setter put = nullptr);
  // The connection point of that interface, null for an object without it; the caller owns the reference.
  virtual IConnectionPoint* ConnectionPoint(REFIID /*iid*/) { return nullptr; }
  void* Find(REFIID iid) override;

 private:
  struct Member {
    std::wstring name;
    Function get;
    Setter put;
  };

  Variant Call(const Member& member, WORD kind, const DISPPARAMS& parameters) const;

  std::vector<Member> members_;
};

// The object that T's constructor makes, as a value of the automation interfaces.
template <class T, class... Arguments>
[[nodiscard]] Variant NewObject(Arguments&&... arguments) {
  return Variant(ComPtr<IDispatch>::Adopt(new T(std::forward<Arguments>(arguments)...)));
}

[[nodiscard]] inline Variant Nothing() {
  return Variant(ComPtr<IDispatch>());
}

// "Application-defined or object-defined error", what the application raises for almost everything.
[[noreturn]] void Refuse(TextView description);

}  // namespace quorvel::tests
