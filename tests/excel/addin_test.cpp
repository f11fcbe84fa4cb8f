// The DLL as the application meets it: registration, class object, connection, commands, disconnection.

#include "hosts/excel/automation_error.h"
#include "hosts/excel/registration.h"
#include "hosts/excel/registry_key.h"
#include "platform/runtime_error.h"
#include "tests/excel/loaded_addin.h"

namespace quorvel::tests {
namespace {

constexpr TextView kClass = uR"(Software\Classes\CLSID\{ED9E9C49-5CC1-44FD-9950-DEECA31732F8})";
constexpr TextView kAddIn = uR"(Software\Microsoft\Office\Excel\Addins\Quorvel.Connect)";

bool KeyExists(const Text& key) {
  HKEY opened = nullptr;
  const bool exists = RegOpenKeyExW(HKEY_CURRENT_USER, reinterpret_cast<const wchar_t*>(key.c_str()), 0,
                                    KEY_READ, &opened) == 0;
  if (exists) RegCloseKey(opened);
  return exists;
}

std::optional<Text> TextAt(const Text& key, const Text& name) {
  return ReadRegistryText(HKEY_CURRENT_USER, key, name);
}

using AddinTest = RegisteredAddin;

TEST_F(AddinTest, RegistersForTheUserAndLeavesNothingBehind) {
  EXPECT_EQ(TextAt(uR"(Software\Classes\Quorvel.Connect\CLSID)", u""),
            u"{ED9E9C49-5CC1-44FD-9950-DEECA31732F8}");
  EXPECT_EQ(TextAt(Text(kClass) + uR"(\InprocServer32)", u"ThreadingModel"), u"Apartment");
  const Text path = TextAt(Text(kClass) + uR"(\InprocServer32)", u"").value_or(u"");
  EXPECT_TRUE(path.ends_with(uR"(\Quorvel.dll)")) << ToUtf8(path);
  EXPECT_EQ(TextAt(Text(kClass) + uR"(\ProgID)", u""), u"Quorvel.Connect");
  EXPECT_EQ(TextAt(Text(kAddIn), u"FriendlyName"), u"Quorvel AddIn");
  EXPECT_EQ(
      TextAt(Text(kAddIn), u"Description"),
      u"This AddIn will provide an easiest way of sending SMS to mobile number available in Excel Sheet with quick customized way.");

  EXPECT_EQ(CallDll("DllRegisterServer"), S_OK) << "over an earlier registration";
  EXPECT_EQ(CallDll("DllUnregisterServer"), S_OK);
  for (const Text& key : {Text(kClass), Text(kAddIn), Text(uR"(Software\Classes\Quorvel.Connect)")}) {
    EXPECT_FALSE(KeyExists(key)) << ToUtf8(key);
  }
  EXPECT_EQ(CallDll("DllUnregisterServer"), S_OK) << "with nothing there";
}

TEST_F(AddinTest, TheClassObjectKeepsTheRulesOfComponents) {
  const HMODULE dll = LoadLibraryW(kDll);
  const auto get_class = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(dll, "DllGetClassObject")));
  void* object = nullptr;
  EXPECT_EQ(get_class(IID_IUnknown, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(CallDll("DllCanUnloadNow"), S_OK);
  {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(get_class(kConnectClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
    EXPECT_EQ(CallDll("DllCanUnloadNow"), S_FALSE);
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    ComPtr<IUnknown> addin;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(addin.Receive())),
              S_OK);
    constexpr IID kRibbon = {0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    EXPECT_FALSE(addin.As<IUnknown>(kRibbon));
    EXPECT_TRUE(addin.As<IUnknown>(kExtensibility));
    const AutomationObject commands(addin.As<IDispatch>(IID_IDispatch));
    EXPECT_FALSE(commands.Has(L"Format"));
    try {
      commands.Call(L"SendSMS");
      FAIL() << "not connected";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 91);
    }
  }
  EXPECT_EQ(CallDll("DllCanUnloadNow"), S_OK);
  FreeLibrary(dll);
}

TEST_F(AddinTest, ConnectionBuildsTheToolbarAndTheMenu) {
  stand_in_.Load(u"Quorvel.Connect");
  const auto toolbar = stand_in_.bars->Find(u"SMS");
  ASSERT_TRUE(toolbar);
  EXPECT_TRUE(toolbar->visible);
  Text captions;
  for (const auto& button : toolbar->controls) {
    captions += button->caption + u"|";
    EXPECT_EQ(button->face.size(), 256U);
    EXPECT_EQ(button->style, 3);
    EXPECT_TRUE(button->temporary);
  }
  EXPECT_EQ(captions, u"Send SMS|Proxy Settings|Help|");
  const auto& menus = stand_in_.bars->bars[0]->controls;
  ASSERT_EQ(menus.size(), 4U);
  EXPECT_EQ(menus[2]->caption, u"&SMS") << "before the last of the bar's menus";
  captions.clear();
  for (const auto& item : menus[2]->children)
    captions += (item->begins_group ? u"-" : u"") + item->caption + u"|";
  EXPECT_EQ(captions, u"Login|-Send SMS|Proxy Settings|-Help|-Logout|");
}

TEST_F(AddinTest, DisconnectionLetsGoOfTheHostAndOfTheDll) {
  stand_in_.book->Add(u"People");
  stand_in_.Load(u"Quorvel.Connect");
  user_.Expect(u"Send SMS", [](const Dialog& dialog) { dialog.Press(u"Close"); });
  Click(*stand_in_.bars, ToolbarButton(u"Send SMS"));
  EXPECT_GT(stand_in_.ForeignReferences(), 0U);
  stand_in_.Unload();
  EXPECT_EQ(stand_in_.ForeignReferences(), 0U);
  EXPECT_EQ(GetModuleHandleW(kDll), nullptr);
  Click(*stand_in_.bars, ToolbarButton(u"Send SMS"));  // a button that was left behind does nothing
}

TEST_F(AddinTest, ASecondConnectionInTheSameSessionLeavesTheHostAsItWas) {
  stand_in_.Load(u"Quorvel.Connect");
  stand_in_.Unload();
  stand_in_.Load(u"Quorvel.Connect");
  EXPECT_EQ(stand_in_.bars->bars.size(), 2U);
  EXPECT_EQ(stand_in_.bars->bars[0]->controls.size(), 4U);
}

TEST_F(AddinTest, MacrosReachTheCommandsThroughTheAddinsObject) {
  stand_in_.book = nullptr;
  stand_in_.Load(u"Quorvel.Connect");
  ExpectAlert(u" S M S ", u"Work book does not exit. Please check");
  stand_in_.AddinObject().Call(L"SendSMS", {Variant(TextView(u"what a ribbon passes"))});
  ExpectAlert(u" S M S ", u"Work book does not exit. Please check");
  stand_in_.AddinObject().Call(L"DeliveryReport");
  ExpectAlert(u"S M S", u"Logged out successfully");
  stand_in_.AddinObject().Call(L"Logout");
  EXPECT_FALSE(MenuItem(u"Logout")->enabled);
}

// Whatever call of the set-up the host turns down: no crash, and nothing of the host is held on to.
TEST_F(AddinTest, AHostThatRefusesFromSomeCallOnStaysUpAndIsLetGo) {
  const int living = Automation::living;
  for (int accepted = 0; Automation::rejection == S_OK; accepted += 3) {
    Automation::accepted = accepted;
    Automation::rejection = static_cast<HRESULT>(0x800AC472);
    stand_in_.Load(u"Quorvel.Connect");
    // The rejection stays where the set-up did not need that many calls.
    if (Automation::accepted < 0) Automation::rejection = S_OK;
    stand_in_.Unload();
    ASSERT_EQ(stand_in_.ForeignReferences(), 0U) << accepted;
    ASSERT_EQ(Automation::living, living) << accepted;
    ASSERT_EQ(GetModuleHandleW(kDll), nullptr) << accepted;
    stand_in_.bars->bars.resize(1);
    stand_in_.bars->bars[0]->controls.resize(3);
  }
  Automation::rejection = S_OK;
}

TEST_F(AddinTest, AHostThatDisconnectsUnderAnOpenFormLetsItEnd) {
  user_.Expect(u"SMS - Login", [&](const Dialog& dialog) {
    stand_in_.Unload();
    EXPECT_NE(GetModuleHandleW(kDll), nullptr) << "its code is running";
    EXPECT_GT(stand_in_.ForeignReferences(), 0U) << "so are its objects";
    dialog.Press(u"Cancel");
  });
  stand_in_.Load(u"Quorvel.Connect");
  ClickMenu(u"Login");
  EXPECT_EQ(stand_in_.ForeignReferences(), 0U);
  EXPECT_EQ(CallDll("DllCanUnloadNow"), S_OK);
}

}  // namespace
}  // namespace quorvel::tests
