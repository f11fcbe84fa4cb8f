// Settings in the registry, and the system's code page.

#include <gtest/gtest.h>

#include "hosts/excel/registry_key.h"
#include "hosts/excel/registry_settings.h"
#include "hosts/excel/system_code_page.h"
#include "tests/contracts/settings_contract.h"

namespace quorvel::tests {
namespace {

constexpr TextView kApplicationKey = uR"(Software\VB and VBA Program Settings\App)";

struct RegistryStore {
  RegistryStore() { Clear(); }
  RegistryStore(const RegistryStore&) = delete;
  RegistryStore& operator=(const RegistryStore&) = delete;
  ~RegistryStore() { Clear(); }

  static void Clear() { EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, Text(kApplicationKey)), 0); }

  RegistrySettings store;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Registry, SettingsContract, RegistryStore);

TEST(RegistrySettings, StandsWhereThePlatformsOwnFacilityKeepsThem) {
  RegistryStore registry;
  const Text section = Text(kApplicationKey) + u"\\STARTUP";
  registry.store.Write({u"App", u"STARTUP", u"MODES"}, u"L-List");
  EXPECT_EQ(ReadRegistryText(HKEY_CURRENT_USER, section, u"MODES"), u"L-List");
  ASSERT_EQ(WriteRegistryNumber(HKEY_CURRENT_USER, section, u"MODES", 7), ERROR_SUCCESS);
  EXPECT_EQ(registry.store.Read({u"App", u"STARTUP", u"MODES"}), std::nullopt) << "no text";
}

TEST(SystemCodePage, AgreesWithWindows1252InBothDirections) {
  // Best fits, lone surrogates and unmappable characters included.
  const SystemCodePage system;
  const CodePage& expected = Windows1252();
  ASSERT_EQ(GetACP(), 1252U);
  for (int unit = 1; unit < 0x10000; ++unit) {
    const Text text(1, static_cast<char16_t>(unit));
    ASSERT_EQ(system.Encode(text), expected.Encode(text)) << std::hex << unit;
  }
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  EXPECT_EQ(system.Decode(bytes), expected.Decode(bytes));
  EXPECT_EQ(system.Encode(u""), "");
  EXPECT_EQ(system.Decode(""), u"");
}

}  // namespace
}  // namespace quorvel::tests
