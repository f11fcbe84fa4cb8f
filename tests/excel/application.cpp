#include "tests/excel/application.h"

#include <stdexcept>

#include "hosts/excel/wide.h"

namespace quorvel::tests {

namespace {

constexpr DWORD kLoadAtStartUp = 3;

class ApplicationObject : public Automation {
 public:
  explicit ApplicationObject(StandIn& application) {
    AddProperty(L"Name", [](const Arguments&) { return Variant(TextView(u"Stand-in")); });
    AddProperty(L"Version", [](const Arguments&) { return Variant(TextView(u"16.0")); });
    AddProperty(L"Hwnd", [&application](const Arguments&) {
      return Variant(static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(application.window())));
    });
    AddProperty(L"ActiveWorkbook", [&application](const Arguments&) {
      return application.book ? NewObject<BookObject>(application.book) : Nothing();
    });
    AddProperty(L"CommandBars",
                [&application](const Arguments&) { return NewObject<BarsObject>(application.bars); });
    AddProperty(
        L"DisplayAlerts",
        [&application](const Arguments&) { return Variant(application.book->display_alerts); },
        [&application](const Variant& value) { application.book->display_alerts = value.ToBool(); });
  }
};

// The application's entry for one add-in.
class AddinEntry : public Automation {
 public:
  AddinEntry() {
    AddProperty(
        L"Object", [this](const Arguments&) { return Variant(object_); },
        [this](const Variant& object) { object_ = object.ToObject(); });
  }

 private:
  ComPtr<IDispatch> object_;
};

void Check(HRESULT result, const char* call) {
  if (FAILED(result)) throw std::runtime_error(std::string(call) + " failed: " + std::to_string(result));
}

bool LoadsAtStartUp(TextView program_id) {
  const Text key = uR"(Software\Microsoft\Office\Excel\Addins\)" + Text(program_id);
  DWORD behaviour = 0;
  DWORD size = sizeof(behaviour);
  return RegGetValueW(HKEY_CURRENT_USER, Wide(key), L"LoadBehavior", RRF_RT_REG_DWORD, nullptr, &behaviour,
                      &size) == ERROR_SUCCESS &&
         behaviour == kLoadAtStartUp;
}

HWND MakeWindow() {
  SetProcessDPIAware();  // as the application is
  return CreateWindowExW(0, L"Static", L"Stand-in", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1000, 760,
                         nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

StandIn::StandIn()
    : book(std::make_shared<BookData>()),
      bars(std::make_shared<BarsData>()),
      window_(MakeWindow()),
      object_(ComPtr<IDispatch>::Adopt(new ApplicationObject(*this))) {
  auto menu_bar = std::make_shared<BarData>();
  menu_bar->name = u"Worksheet Menu Bar";
  for (const TextView caption : {TextView(u"&File"), TextView(u"&Edit"), TextView(u"&Help")}) {
    menu_bar->controls.push_back(std::make_shared<ControlData>());
    menu_bar->controls.back()->type = 10;
    menu_bar->controls.back()->caption = caption;
  }
  bars->bars.push_back(menu_bar);
}

StandIn::~StandIn() {
  Unload();
  DestroyWindow(window_);
}

ULONG StandIn::ForeignReferences() const {
  object_->AddRef();
  return object_->Release() - 1;
}

void StandIn::Load(TextView program_id) {
  if (!LoadsAtStartUp(program_id)) throw std::runtime_error("the add-in is not to be loaded at start-up");
  CLSID clsid{};
  Check(CLSIDFromProgID(Wide(Text(program_id)), &clsid), "CLSIDFromProgID");
  Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, kExtensibility,
                         reinterpret_cast<void**>(addin_.Receive())),
        "CoCreateInstance");
  entry_ = ComPtr<IDispatch>::Adopt(new AddinEntry);
  SAFEARRAY* custom = nullptr;
  Check(addin_->OnConnection(object_.get(), 1, entry_.get(), &custom), "OnConnection");
  Check(addin_->OnStartupComplete(&custom), "OnStartupComplete");
}

void StandIn::Unload() {
  if (!addin_) return;
  SAFEARRAY* custom = nullptr;
  addin_->OnBeginShutdown(&custom);
  addin_->OnDisconnection(0, &custom);
  addin_ = {};
  entry_ = {};
  CoFreeUnusedLibrariesEx(0, 0);
}

AutomationObject StandIn::AddinObject() const {
  return AutomationObject(entry_).GetChild(L"Object");
}

}  // namespace quorvel::tests
