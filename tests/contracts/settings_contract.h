#pragma once

#include <gtest/gtest.h>

#include "platform/settings.h"

namespace quorvel {

// What every store of settings does. `Fixture` has a member `store` that is empty at first.
template <class Fixture>
class SettingsContract : public testing::Test {
 protected:
  Settings& store() { return fixture_.store; }

 private:
  Fixture fixture_;
};

TYPED_TEST_SUITE_P(SettingsContract);

TYPED_TEST_P(SettingsContract, ReadsWhatWasWrittenLastUnderThatKeyAlone) {
  Settings& store = this->store();
  EXPECT_EQ(store.Read({u"App", u"Section", u"Key"}), std::nullopt);
  store.Write({u"App", u"Section", u"Key"}, u"first");
  store.Write({u"App", u"Section", u"Key"}, u"second");
  store.Write({u"App", u"Section", u"Other"}, u"o");
  store.Write({u"App", u"Elsewhere", u"Key"}, u"e");
  EXPECT_EQ(store.Read({u"App", u"Section", u"Key"}), u"second");
  EXPECT_EQ(store.Read({u"App", u"Section", u"Other"}), u"o");
  EXPECT_EQ(store.Read({u"App", u"Elsewhere", u"Key"}), u"e");
  EXPECT_EQ(store.Read({u"AppS", u"ection", u"Key"}), std::nullopt);
}

TYPED_TEST_P(SettingsContract, KeepsEveryText) {
  Settings& store = this->store();
  for (const Text& value : {Text(), Text(u"  blanks  "), Text(u"quo'te\" \\ \r\n"),
                            Text(u"\u0627\u8BDD\U0001F600"), Text(u"with\0zero", 9), Text(70000, u'x')}) {
    store.Write({u"App", u"Section", u"Key"}, value);
    EXPECT_EQ(store.Read({u"App", u"Section", u"Key"}), value);
  }
}

REGISTER_TYPED_TEST_SUITE_P(SettingsContract, ReadsWhatWasWrittenLastUnderThatKeyAlone, KeepsEveryText);

}  // namespace quorvel
