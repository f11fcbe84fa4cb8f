#pragma once

#include <memory>

#include "hosts/excel/com_ptr.h"
#include "hosts/excel/extensibility.h"
#include "hosts/excel/untyped_dispatch.h"

namespace quorvel {

struct ExcelSession;

// The COM class `Connect`: what Excel loads. Its IDispatch also carries the commands, so that a macro or a
// ribbon can call them: Application.COMAddIns("Quorvel.Connect").Object.SendSMS. A command takes no
// arguments; those that a ribbon passes are ignored. Called while disconnected it fails with error 91.
class AddinObject : public UntypedDispatch<IDTExtensibility2> {
 public:
  AddinObject();
  ~AddinObject() override;

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD kind,
                                   DISPPARAMS* arguments, VARIANT* answer, EXCEPINFO* raised,
                                   UINT* wrong_argument) override;

  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, int mode, IDispatch* instance,
                                         SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnDisconnection(int mode, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

 protected:
  void* Find(REFIID iid) override;

 private:
  void Expose(const ComPtr<IDispatch>& object) const;
  HRESULT InvokeLifecycle(DISPID member, const DISPPARAMS& arguments);

  ComPtr<IDispatch> instance_;  // the host's entry for this add-in
  std::shared_ptr<ExcelSession> session_;
};

}  // namespace quorvel
