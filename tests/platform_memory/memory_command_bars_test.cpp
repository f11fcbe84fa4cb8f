#include "platform/memory/memory_command_bars.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"

namespace quorvel {
namespace {

std::unique_ptr<BarControl> AddCaptioned(BarControls& controls, TextView caption, const NewBarControl& what) {
  auto control = controls.Add(what);
  control->SetCaption(caption);
  return control;
}

TEST(MemoryCommandBars, ControlsStandWhereTheyWereInserted) {
  MemoryCommandBars bars({u"&File", u"&Help"});
  const auto menu_bar = bars.MenuBar();
  BarControls& controls = menu_bar->Controls();
  const auto menu = AddCaptioned(controls, u"&SMS", {BarControlType::kPopup, controls.Count()});
  const auto second = AddCaptioned(menu->Children(), u"Second", {BarControlType::kButton, 1});
  const auto first = AddCaptioned(menu->Children(), u"First", {BarControlType::kButton, 1});

  ASSERT_EQ(bars.menu_bar().controls.size(), 3U);
  EXPECT_EQ(bars.menu_bar().controls[1]->caption, u"&SMS");
  ASSERT_EQ(bars.menu_bar().controls[1]->children.size(), 2U);
  EXPECT_EQ(bars.menu_bar().controls[1]->children[0]->caption, u"First");
  EXPECT_THROW(controls.Add({BarControlType::kButton, 4}), RuntimeError);
  EXPECT_THROW((void)first->Children(), RuntimeError);
}

TEST(MemoryCommandBars, FindControlGivesTheFirstOfItsTypeAndDeleteTakesItAway) {
  MemoryCommandBars bars;
  const auto menu_bar = bars.MenuBar();
  EXPECT_EQ(menu_bar->FindControl(BarControlType::kPopup), nullptr);
  const auto button = AddCaptioned(menu_bar->Controls(), u"Button", {BarControlType::kButton, 0});
  const auto one = AddCaptioned(menu_bar->Controls(), u"One", {BarControlType::kPopup, 0});
  const auto two = AddCaptioned(menu_bar->Controls(), u"Two", {BarControlType::kPopup, 0});

  const auto found = menu_bar->FindControl(BarControlType::kPopup);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->Caption(), u"One");
  found->Delete();
  EXPECT_EQ(menu_bar->FindControl(BarControlType::kPopup)->Caption(), u"Two");
}

TEST(MemoryCommandBars, RefusesASecondToolbarOfTheSameName) {
  MemoryCommandBars bars;
  bars.Add(u"SMS");
  try {
    bars.Add(u"SMS");
    FAIL() << "a second toolbar of the same name";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 5);
  }
  EXPECT_EQ(bars.toolbars().size(), 1U);
}

TEST(MemoryCommandBars, AClickReachesOnlyWhatAUserCanReach) {
  MemoryCommandBars bars;
  const auto toolbar = bars.Add(u"SMS");
  auto button = AddCaptioned(toolbar->Controls(), u"Send", {});
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
  button->SetVisible(true);
  EXPECT_EQ(clicks, 1);

  button.reset();  // the handler goes with the handle, the button stays
  EXPECT_TRUE(bars.Click({u"SMS", u"Send"}));
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace quorvel
