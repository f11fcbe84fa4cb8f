#include "platform/memory/memory_command_bars.h"

#include <gtest/gtest.h>

#include "tests/contracts/command_bars_contract.h"

namespace quorvel {
namespace {

struct MemoryHost {
  CommandBars& bars() { return memory; }
  [[nodiscard]] Text Menus() const { return Captions(memory.menu_bar().controls); }
  void Click(TextView caption) { memory.Click({u"SMS", caption}); }

  MemoryCommandBars memory{{u"&File", u"&Help"}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, CommandBarsContract, MemoryHost);

TEST(MemoryCommandBars, AClickReachesOnlyWhatAUserCanReach) {
  MemoryCommandBars bars;
  const auto toolbar = bars.Add(u"SMS");
  const auto button = toolbar->Controls().Add({});
  button->SetCaption(u"Send");
  int clicks = 0;
  button->OnClick([&] { ++clicks; });

  EXPECT_FALSE(bars.Click({u"SMS", u"Send"}));  // new toolbars are hidden
  toolbar->SetVisible(true);
  EXPECT_TRUE(bars.Click({u"SMS", u"Send"}));
  EXPECT_FALSE(bars.Click({u"SMS", u"Login"}));
  button->SetEnabled(false);
  EXPECT_FALSE(bars.Click({u"SMS", u"Send"}));
  button->SetEnabled(true);
  button->SetVisible(false);
  EXPECT_FALSE(bars.Click({u"SMS", u"Send"}));
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace quorvel
