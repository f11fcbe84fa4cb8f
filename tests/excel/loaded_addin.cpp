#include "tests/excel/loaded_addin.h"

#include <stdexcept>
#include <string>

#include "hosts/excel/registry_key.h"
#include "hosts/excel/wide.h"
#include "tests/excel/picture.h"

namespace quorvel::tests {

namespace {

void ForgetSettings() {
  static_cast<void>(DeleteRegistryKey(HKEY_CURRENT_USER, uR"(Software\VB and VBA Program Settings\Tessaly)"));
}

constexpr TextView kClassKeys[] = {uR"(Software\Classes\CLSID\{ED9E9C49-5CC1-44FD-9950-DEECA31732F8})",
                                   uR"(Software\Classes\Quorvel.Connect)"};

}  // namespace

MachineClasses::MachineClasses() {
  for (const TextView name : kClassKeys) {
    const Text key(name);
    HKEY copy = nullptr;
    LSTATUS status = RegCreateKeyW(HKEY_LOCAL_MACHINE, Wide(key), &copy);
    if (status == ERROR_SUCCESS) status = RegCopyTreeW(HKEY_CURRENT_USER, Wide(key), copy);
    RegCloseKey(copy);
    if (status != ERROR_SUCCESS) throw std::runtime_error("cannot copy the class: " + std::to_string(status));
  }
}

MachineClasses::~MachineClasses() {
  for (const TextView name : kClassKeys) {
    EXPECT_EQ(DeleteRegistryKey(HKEY_LOCAL_MACHINE, Text(name)), ERROR_SUCCESS);
  }
}

HRESULT CallDll(const char* entry_point) {
  const HMODULE dll = LoadLibraryW(kDll);
  const auto function =
      reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(GetProcAddress(dll, entry_point)));
  const HRESULT result = function == nullptr ? E_NOINTERFACE : function();
  FreeLibrary(dll);
  return result;
}

RegisteredAddin::RegisteredAddin() {
  OleInitialize(nullptr);
  ForgetSettings();
  if (CallDll("DllRegisterServer") != S_OK) throw std::runtime_error("the DLL does not register");
  machine_classes_.emplace();
}

RegisteredAddin::~RegisteredAddin() {
  stand_in_.Unload();
  machine_classes_.reset();
  EXPECT_EQ(CallDll("DllUnregisterServer"), S_OK);
  ForgetSettings();
  OleUninitialize();
}

void RegisteredAddin::TearDown() {
  EXPECT_EQ(user_.problems(), std::vector<std::string>());
  EXPECT_EQ(user_.pending(), 0U);
  EXPECT_TRUE(IsWindowEnabled(stand_in_.window()));
}

std::shared_ptr<ControlData> RegisteredAddin::ToolbarButton(TextView caption) const {
  return Named(stand_in_.bars->Find(u"SMS")->controls, caption);
}

std::shared_ptr<ControlData> RegisteredAddin::MenuItem(TextView caption) const {
  return Named(Named(stand_in_.bars->bars[0]->controls, u"&SMS")->children, caption);
}

void RegisteredAddin::ExpectAlert(TextView title, TextView text) {
  user_.Expect(title, [text = Text(text)](const Dialog& dialog) {
    EXPECT_EQ(ToUtf8(dialog.Message()), ToUtf8(text));
    TakePicture(dialog.window(), "alert");
    dialog.Press(u"OK");
  });
}

}  // namespace quorvel::tests
