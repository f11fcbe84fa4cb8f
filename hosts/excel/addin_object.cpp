#include "hosts/excel/addin_object.h"

#include <algorithm>
#include <array>
#include <string>

#include "hosts/excel/com_boundary.h"
#include "hosts/excel/excel_session.h"
#include "hosts/excel/log.h"
#include "hosts/excel/registration.h"

namespace quorvel {

namespace {

constexpr DISPID kFirstCommand = 101;

struct Command {
  std::wstring_view name;
  void (Connect::*run)();
};

constexpr std::array kCommands = {
    Command{L"SendSMS", &Connect::SendSms},
    Command{L"ProxySettings", &Connect::ProxySettings},
    Command{L"Login", &Connect::Login},
    Command{L"Logout", &Connect::Logout},
    Command{L"GetBalance", &Connect::GetBalance},
    Command{L"GetModes", &Connect::GetModes},
    Command{L"DeliveryReport", &Connect::DeliveryReport},
};

struct LifecycleName {
  std::wstring_view name;
  ExtensibilityMember member;
};

constexpr std::array kLifecycle = {
    LifecycleName{L"OnConnection", ExtensibilityMember::kOnConnection},
    LifecycleName{L"OnDisconnection", ExtensibilityMember::kOnDisconnection},
    LifecycleName{L"OnAddInsUpdate", ExtensibilityMember::kOnAddInsUpdate},
    LifecycleName{L"OnStartupComplete", ExtensibilityMember::kOnStartupComplete},
    LifecycleName{L"OnBeginShutdown", ExtensibilityMember::kOnBeginShutdown},
};

bool SameName(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

DISPID MemberNamed(std::wstring_view name) {
  for (std::size_t index = 0; index < kCommands.size(); ++index) {
    if (SameName(kCommands[index].name, name)) return kFirstCommand + static_cast<DISPID>(index);
  }
  const auto found = std::find_if(kLifecycle.begin(), kLifecycle.end(),
                                  [&](const LifecycleName& row) { return SameName(row.name, name); });
  return found == kLifecycle.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found->member);
}

// What whoever looks into a user's trouble asks first.
void LogHost(const AutomationObject& host) {
  std::string line = std::string("version ") + kVersion + (sizeof(void*) == 8 ? ", 64-bit" : ", 32-bit");
  try {
    line += ", in " + ToUtf8(host.Get(L"Name").ToText()) + " " + ToUtf8(host.Get(L"Version").ToText());
  } catch (const RuntimeError& error) {
    line += std::string(", host unknown: ") + error.what();
  }
  Log("OnConnection", line);
}

}  // namespace

AddinObject::AddinObject() = default;
AddinObject::~AddinObject() = default;

void* AddinObject::Find(REFIID iid) {
  const bool known = IsEqualIID(iid, kExtensibility) || IsEqualIID(iid, IID_IDispatch);
  return known ? static_cast<IDTExtensibility2*>(this) : nullptr;
}

HRESULT AddinObject::OnConnection(IDispatch* application, int /*mode*/, IDispatch* instance,
                                  SAFEARRAY** /*custom*/) {
  if (application == nullptr) return E_INVALIDARG;
  return Guarded("OnConnection", [&] {
    const ComPtr<IDispatch> host(application);
    LogHost(AutomationObject(host));
    session_ = std::make_shared<ExcelSession>(host);
    instance_ = ComPtr<IDispatch>(instance);
    Expose(ComPtr<IDispatch>(this));
    session_->connect.OnConnection();
    return S_OK;
  });
}

HRESULT AddinObject::OnDisconnection(int /*mode*/, SAFEARRAY** /*custom*/) {
  return Guarded("OnDisconnection", [&] {
    if (session_) session_->connect.OnDisconnection();
    Expose({});
    instance_ = {};
    session_.reset();  // lets go of all of the host's objects, or the host would not end
    return S_OK;
  });
}

HRESULT AddinObject::OnAddInsUpdate(SAFEARRAY** /*custom*/) {
  return S_OK;
}

HRESULT AddinObject::OnStartupComplete(SAFEARRAY** /*custom*/) {
  return S_OK;
}

HRESULT AddinObject::OnBeginShutdown(SAFEARRAY** /*custom*/) {
  return S_OK;
}

// Makes the commands reachable from the host's list of add-ins. A host without one serves as well.
void AddinObject::Expose(const ComPtr<IDispatch>& object) const {
  if (!instance_) return;
  try {
    AutomationObject(instance_).Put(L"Object", Variant(object));
  } catch (const RuntimeError& error) {
    Log("AddIn.Object", error.what());
  }
}

HRESULT AddinObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                   DISPID* ids) {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  std::fill_n(ids, count, DISPID_UNKNOWN);  // arguments have no names
  ids[0] = MemberNamed(names[0]);
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT AddinObject::Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD kind,
                            DISPPARAMS* arguments, VARIANT* answer, EXCEPINFO* /*raised*/,
                            UINT* /*wrong_argument*/) {
  if (arguments == nullptr) return E_POINTER;
  if ((kind & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
  if (answer != nullptr) VariantInit(answer);
  const auto index = static_cast<std::size_t>(member - kFirstCommand);
  if (member < kFirstCommand || index >= kCommands.size()) return InvokeLifecycle(member, *arguments);
  return Guarded("command", [&] {
    const auto session = session_;  // a command that closes the host disconnects the add-in
    if (!session) throw ObjectNotSet();
    (session->connect.*kCommands[index].run)();
    return S_OK;
  });
}

HRESULT AddinObject::InvokeLifecycle(DISPID member, const DISPPARAMS& arguments) {
  switch (static_cast<ExtensibilityMember>(member)) {
    case ExtensibilityMember::kOnConnection:
      if (arguments.cArgs != 4) return DISP_E_BADPARAMCOUNT;  // last argument first
      return Guarded("OnConnection", [&] {
        const ComPtr<IDispatch> application = Variant(arguments.rgvarg[3]).ToObject();
        const ComPtr<IDispatch> instance = Variant(arguments.rgvarg[1]).ToObject();
        return OnConnection(application.get(), Variant(arguments.rgvarg[2]).ToLong(), instance.get(),
                            nullptr);
      });
    case ExtensibilityMember::kOnDisconnection:
      return OnDisconnection(0, nullptr);
    case ExtensibilityMember::kOnAddInsUpdate:
    case ExtensibilityMember::kOnStartupComplete:
    case ExtensibilityMember::kOnBeginShutdown:
      return S_OK;
  }
  return DISP_E_MEMBERNOTFOUND;
}

}  // namespace quorvel
