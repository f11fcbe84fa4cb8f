#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/command_bars.h"
#include "tests/platform/expect_error.h"

namespace quorvel {

// The captions of controls, each followed by a blank; those within a popup in parentheses.
template <class Control>
Text Captions(const std::vector<std::shared_ptr<Control>>& controls) {
  Text text;
  for (const auto& control : controls) {
    text += control->caption + u" ";
    if (!control->children.empty()) text += u"(" + Captions(control->children) + u")";
  }
  return text;
}

// What every host's command bars do. `Fixture` begins with the popups "&File" and "&Help" on its menu bar; it
// has
//   CommandBars& bars()
//   Text Menus(), the Captions of the menu bar
//   void Click(TextView caption), the user's click on a button of the toolbar "SMS"
template <class Fixture>
class CommandBarsContract : public testing::Test {
 protected:
  std::unique_ptr<BarControl> AddCaptioned(BarControls& controls, TextView caption,
                                           const NewBarControl& what) const {
    auto control = controls.Add(what);
    control->SetCaption(caption);
    return control;
  }

  Fixture fixture_;
};

TYPED_TEST_SUITE_P(CommandBarsContract);

TYPED_TEST_P(CommandBarsContract, ControlsStandWhereTheyWereInserted) {
  const auto menu_bar = this->fixture_.bars().MenuBar();
  BarControls& controls = menu_bar->Controls();
  const auto menu = this->AddCaptioned(controls, u"&SMS", {BarControlType::kPopup, controls.Count()});
  const auto second = this->AddCaptioned(menu->Children(), u"Second", {BarControlType::kButton, 1});
  const auto first = this->AddCaptioned(menu->Children(), u"First", {BarControlType::kButton, 1});
  EXPECT_EQ(this->fixture_.Menus(), u"&File &SMS (First Second )&Help ");
  EXPECT_THROW(controls.Add({BarControlType::kButton, 5}), RuntimeError);
  EXPECT_THROW(static_cast<void>(first->Children()), RuntimeError);
}

TYPED_TEST_P(CommandBarsContract, FindControlGivesTheFirstOfItsTypeAndDeleteTakesItAway) {
  const auto menu_bar = this->fixture_.bars().MenuBar();
  EXPECT_EQ(menu_bar->FindControl(BarControlType::kButton), nullptr);
  const auto button = this->AddCaptioned(menu_bar->Controls(), u"Button", {BarControlType::kButton, 1});
  const auto found = menu_bar->FindControl(BarControlType::kPopup);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->Caption(), u"&File");
  found->Delete();
  EXPECT_EQ(menu_bar->FindControl(BarControlType::kPopup)->Caption(), u"&Help");
  EXPECT_EQ(this->fixture_.Menus(), u"Button &Help ");
}

TYPED_TEST_P(CommandBarsContract, RefusesASecondToolbarOfAName) {
  CommandBars& bars = this->fixture_.bars();
  const auto bar = bars.Add(u"SMS");
  EXPECT_EQ(ErrorOf([&] { return bars.Add(u"SMS"); }), kInvalidCall);
}

TYPED_TEST_P(CommandBarsContract, AClickRunsItsOwnHandlerUntilTheHandleIsLetGo) {
  const auto bar = this->fixture_.bars().Add(u"SMS");
  bar->SetVisible(true);
  std::string clicked;
  const auto first = this->AddCaptioned(bar->Controls(), u"One", {});
  first->OnClick([&] { clicked += "1"; });
  auto second = this->AddCaptioned(bar->Controls(), u"Two", {});
  second->OnClick([&] {
    clicked += "2";
    second.reset();  // a handler may end its own button
  });
  this->fixture_.Click(u"One");
  this->fixture_.Click(u"Two");
  this->fixture_.Click(u"Two");
  first->SetEnabled(false);
  this->fixture_.Click(u"One");
  EXPECT_EQ(clicked, "12");
}

REGISTER_TYPED_TEST_SUITE_P(CommandBarsContract, ControlsStandWhereTheyWereInserted,
                            FindControlGivesTheFirstOfItsTypeAndDeleteTakesItAway,
                            RefusesASecondToolbarOfAName, AClickRunsItsOwnHandlerUntilTheHandleIsLetGo);

}  // namespace quorvel
