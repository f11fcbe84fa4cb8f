// Settings in the registry, and the system's code page.

#include <gtest/gtest.h>

#include "hosts/excel/registry_key.h"
#include "hosts/excel/registry_settings.h"
#include "hosts/excel/system_code_page.h"

namespace quorvel::tests {
namespace {

constexpr TextView kApplication = u"QuorvelTest";

class RegistrySettingsTest : public testing::Test {
 protected:
  RegistrySettingsTest() { Clear(); }
  ~RegistrySettingsTest() override { Clear(); }

  static void Clear() {
    static_cast<void>(
        DeleteRegistryKey(HKEY_CURRENT_USER, uR"(Software\VB and VBA Program Settings\QuorvelTest)"));
  }

  RegistrySettings settings_;
};

TEST_F(RegistrySettingsTest, KeepsTextsByApplicationSectionAndKey) {
  const SettingPath path{kApplication, u"STARTUP", u"MODES"};
  EXPECT_EQ(settings_.Read(path), std::nullopt);
  const Text value = u"L-List, \u20AC \u05D0" + Text(5000, u'x');
  settings_.Write(path, value);
  EXPECT_EQ(settings_.Read(path), value);
  settings_.Write(path, u"");
  EXPECT_EQ(settings_.Read(path), Text()) << "empty is not missing";
  EXPECT_EQ(settings_.Read({kApplication, u"Other", u"MODES"}), std::nullopt);
  EXPECT_EQ(settings_.Read({u"QuorvelOther", u"STARTUP", u"MODES"}), std::nullopt);
  EXPECT_EQ(ReadRegistryText(HKEY_CURRENT_USER,
                             uR"(Software\VB and VBA Program Settings\QuorvelTest\STARTUP)", u"MODES"),
            Text());
}

TEST_F(RegistrySettingsTest, AValueThatIsNoTextCountsAsMissing) {
  ASSERT_EQ(WriteRegistryNumber(HKEY_CURRENT_USER, uR"(Software\VB and VBA Program Settings\QuorvelTest\S)",
                                u"Key", 7),
            ERROR_SUCCESS);
  EXPECT_EQ(settings_.Read({kApplication, u"S", u"Key"}), std::nullopt);
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
