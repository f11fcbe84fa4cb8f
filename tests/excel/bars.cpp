#include "tests/excel/bars.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

#include "hosts/excel/button_events.h"
#include "platform/runtime_error.h"

namespace quorvel::tests {

namespace {

constexpr std::int32_t kPopup = 10;

// The click event of one button.
class ClickPoint : public ComObject<IConnectionPoint> {
 public:
  explicit ClickPoint(std::shared_ptr<ControlData> control) : control_(std::move(control)) {}

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    *iid = kButtonEvents;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** /*container*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    // The application asks for the event interface itself.
    auto events = ComPtr<IUnknown>(sink).As<IDispatch>(kButtonEvents);
    if (!events) return CONNECT_E_CANNOTCONNECT;
    *cookie = ++last_cookie;
    control_->sinks[*cookie] = std::move(events);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return control_->sinks.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** /*connections*/) override { return E_NOTIMPL; }

 protected:
  void* Find(REFIID iid) override {
    return IsEqualIID(iid, IID_IConnectionPoint) ? static_cast<IConnectionPoint*>(this) : nullptr;
  }

 private:
  static inline DWORD last_cookie = 0;
  std::shared_ptr<ControlData> control_;
};

// A bitmap of 16 by 16 pixels and so many bits each, from the bottom row up; empty when it is another.
std::vector<std::uint32_t> ReadBitmap(UINT format, WORD bits) {
  const HANDLE data = GetClipboardData(format);
  if (data == nullptr) return {};
  const auto* const bitmap = static_cast<const BITMAPINFO*>(GlobalLock(data));
  const BITMAPINFOHEADER& header = bitmap->bmiHeader;
  const auto* const rows = reinterpret_cast<const std::uint8_t*>(bitmap->bmiColors + (bits == 1 ? 2 : 0));
  std::vector<std::uint32_t> pixels;
  if (header.biBitCount == bits && header.biWidth == 16 && header.biHeight == 16) {
    const HDC screen = GetDC(nullptr);
    const HBITMAP copy = CreateDIBitmap(screen, &header, CBM_INIT, rows, bitmap, DIB_RGB_COLORS);
    BITMAPINFO wanted{};
    wanted.bmiHeader = {sizeof(BITMAPINFOHEADER), 16, 16, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    pixels.resize(256);
    GetDIBits(screen, copy, 0, 16, pixels.data(), &wanted, DIB_RGB_COLORS);
    for (std::uint32_t& pixel : pixels) pixel &= 0xFFFFFF;
    DeleteObject(copy);
    ReleaseDC(nullptr, screen);
  }
  GlobalUnlock(data);
  return pixels;
}

void PasteFace(ControlData& control) {
  if (OpenClipboard(nullptr) == FALSE) Refuse(u"Method 'PasteFace' failed");
  control.face = ReadBitmap(CF_DIB, 24);
  control.mask = ReadBitmap(RegisterClipboardFormatW(L"Toolbar Button Mask"), 1);
  CloseClipboard();
  if (control.face.empty()) Refuse(u"Method 'PasteFace' failed");
}

using ControlList = std::vector<std::shared_ptr<ControlData>>;

class ControlsObject : public Automation {
 public:
  explicit ControlsObject(std::function<ControlList&()> list);

 private:
  Variant Add(const Arguments& arguments);

  std::function<ControlList&()> list_;
};

// A control; `list` is where it lives.
class ControlObject : public Automation {
 public:
  ControlObject(std::shared_ptr<ControlData> control, const std::function<ControlList&()>& list)
      : control_(std::move(control)) {
    AddText(L"Caption", control_->caption);
    AddText(L"Tag", control_->tag);
    AddNumber(L"Style", control_->style);
    AddNumber(L"FaceId", control_->face_id);
    AddFlag(L"BeginGroup", control_->begins_group);
    AddFlag(L"Visible", control_->visible);
    AddFlag(L"Enabled", control_->enabled);
    AddFunction(L"PasteFace", [this](const Arguments&) {
      tests::PasteFace(*control_);
      return Variant();
    });
    AddFunction(L"Delete", [this, list](const Arguments&) {
      std::erase(list(), control_);
      return Variant();
    });
    if (control_->type == kPopup) {
      AddProperty(L"Controls", [this](const Arguments&) {
        return NewObject<ControlsObject>(
            [control = control_]() -> ControlList& { return control->children; });
      });
    }
  }

 protected:
  IConnectionPoint* ConnectionPoint(REFIID iid) override {
    const bool clicks = control_->type != kPopup && IsEqualIID(iid, kButtonEvents);
    return clicks ? new ClickPoint(control_) : nullptr;
  }

 private:
  void AddText(std::wstring_view name, Text& text) {
    AddProperty(
        name, [&text](const Arguments&) { return Variant(text); },
        [&text](const Variant& value) { text = value.ToText(); });
  }
  void AddNumber(std::wstring_view name, std::int32_t& number) {
    AddProperty(
        name, [&number](const Arguments&) { return Variant(number); },
        [&number](const Variant& value) { number = value.ToLong(); });
  }
  void AddFlag(std::wstring_view name, bool& flag) {
    AddProperty(
        name, [&flag](const Arguments&) { return Variant(flag); },
        [&flag](const Variant& value) { flag = value.ToBool(); });
  }

  std::shared_ptr<ControlData> control_;
};

ControlsObject::ControlsObject(std::function<ControlList&()> list) : list_(std::move(list)) {
  AddProperty(L"Count",
              [this](const Arguments&) { return Variant(static_cast<std::int32_t>(list_().size())); });
  AddFunction(L"Add", [this](const Arguments& arguments) { return Add(arguments); });
}

// Add(Type, Id, Parameter, Before, Temporary)
Variant ControlsObject::Add(const Arguments& arguments) {
  auto control = std::make_shared<ControlData>();
  if (arguments.Has(0)) control->type = arguments[0].ToLong();
  control->temporary = arguments.Has(4) && arguments[4].ToBool();
  ControlList& controls = list_();
  const auto before =
      arguments.Has(3) ? static_cast<std::size_t>(arguments[3].ToLong()) : controls.size() + 1;
  if (before < 1 || before > controls.size() + 1) throw InvalidCall();
  controls.insert(controls.begin() + static_cast<std::ptrdiff_t>(before - 1), control);
  return NewObject<ControlObject>(control, list_);
}

class BarObject : public Automation {
 public:
  explicit BarObject(const std::shared_ptr<BarData>& bar) {
    const auto list = [bar]() -> ControlList& { return bar->controls; };
    AddProperty(L"Name", [bar](const Arguments&) { return Variant(bar->name); });
    AddProperty(
        L"Visible", [bar](const Arguments&) { return Variant(bar->visible); },
        [bar](const Variant& value) { bar->visible = value.ToBool(); });
    AddProperty(L"Controls", [list](const Arguments&) { return NewObject<ControlsObject>(list); });
    AddFunction(L"FindControl", [bar, list](const Arguments& arguments) {
      const std::int32_t type = arguments[0].ToLong();
      for (const auto& control : bar->controls) {
        if (control->type == type) return NewObject<ControlObject>(control, list);
      }
      return Nothing();
    });
  }
};

void CollectTagged(const ControlList& controls, TextView tag, ControlList& found) {
  for (const auto& control : controls) {
    if (control->tag == tag) found.push_back(control);
    CollectTagged(control->children, tag, found);
  }
}

}  // namespace

std::shared_ptr<BarData> BarsData::Find(TextView name) const {
  const auto found =
      std::find_if(bars.begin(), bars.end(), [&](const auto& bar) { return bar->name == name; });
  return found == bars.end() ? nullptr : *found;
}

std::shared_ptr<ControlData> Named(const std::vector<std::shared_ptr<ControlData>>& controls,
                                   TextView caption) {
  const auto found = std::find_if(controls.begin(), controls.end(),
                                  [&](const auto& control) { return control->caption == caption; });
  if (found == controls.end()) throw std::runtime_error("no control " + ToUtf8(caption));
  return *found;
}

void Click(const BarsData& bars, const std::shared_ptr<ControlData>& control) {
  if (!control->enabled) return;
  ControlList sharing;
  for (const auto& bar : bars.bars) CollectTagged(bar->controls, control->tag, sharing);
  std::vector<ComPtr<IDispatch>> sinks;
  for (const auto& other : sharing) {
    for (const auto& [cookie, sink] : other->sinks) sinks.push_back(sink);
  }
  for (const auto& sink : sinks) {
    VARIANT_BOOL cancel_default = VARIANT_FALSE;
    VARIANT arguments[2]{};
    arguments[0].vt = VT_BOOL | VT_BYREF;
    arguments[0].pboolVal = &cancel_default;
    arguments[1].vt = VT_DISPATCH;
    DISPPARAMS parameters{arguments, nullptr, 2, 0};
    sink->Invoke(kButtonClick, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                 nullptr);
  }
}

BarsObject::BarsObject(const std::shared_ptr<BarsData>& bars) {
  // Add(Name, Position, MenuBar, Temporary)
  AddFunction(L"Add", [bars](const Arguments& arguments) {
    auto bar = std::make_shared<BarData>();
    bar->name = arguments[0].ToText();
    bar->temporary = arguments.Has(3) && arguments[3].ToBool();
    if (bars->Find(bar->name)) throw InvalidCall();
    bars->bars.push_back(bar);
    return NewObject<BarObject>(bar);
  });
  AddProperty(L"Item", [bars](const Arguments& arguments) {
    const auto index = static_cast<std::size_t>(arguments[0].ToLong());
    if (index < 1 || index > bars->bars.size()) throw SubscriptOutOfRange();
    return NewObject<BarObject>(bars->bars[index - 1]);
  });
}

}  // namespace quorvel::tests
