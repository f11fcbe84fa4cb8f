#include "hosts/excel/button_events.h"

#include "hosts/excel/automation_error.h"
#include "hosts/excel/com_boundary.h"
#include "hosts/excel/untyped_dispatch.h"

namespace quorvel {

namespace {

// What the button calls, by the member's number.
class ClickSink : public UntypedDispatch<IDispatch> {
 public:
  explicit ClickSink(std::function<void()> handler) : handler_(std::move(handler)) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/,
                                          LCID /*locale*/, DISPID* /*ids*/) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*kind*/,
                                   DISPPARAMS* /*arguments*/, VARIANT* /*answer*/, EXCEPINFO* /*raised*/,
                                   UINT* /*wrong_argument*/) override {
    if (member != kButtonClick) return DISP_E_MEMBERNOTFOUND;
    return Guarded("Click", [&] {
      const ComPtr<ClickSink> keep(this);  // the handler may end the connection
      handler_();
      return S_OK;
    });
  }

 protected:
  void* Find(REFIID iid) override {
    const bool known = IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, kButtonEvents);
    return known ? static_cast<IDispatch*>(this) : nullptr;
  }

 private:
  std::function<void()> handler_;
};

}  // namespace

ButtonEvents::ButtonEvents(const ComPtr<IDispatch>& button, std::function<void()> handler) {
  const auto container = button.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
  ThrowIfFailed(container ? container->FindConnectionPoint(kButtonEvents, point_.Receive()) : E_NOINTERFACE);
  const auto sink = ComPtr<ClickSink>::Adopt(new ClickSink(std::move(handler)));
  ThrowIfFailed(point_->Advise(sink.get(), &cookie_));
}

ButtonEvents::~ButtonEvents() {
  point_->Unadvise(cookie_);
}

}  // namespace quorvel
