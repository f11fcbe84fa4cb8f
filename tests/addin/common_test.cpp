#include <gtest/gtest.h>

#include "addin/common/AlertBox.h"
#include "addin/common/alert.h"
#include "addin/common/progress.h"
#include "platform/memory/fixed_clock.h"
#include "platform/memory/scripted_forms.h"

namespace quorvel {
namespace {

TEST(Alert, TheStyleChoosesTheImage) {
  struct Row {
    int style;
    std::string_view image;
  };
  for (const auto& [style, image] :
       {Row{16, "imgAlertType16"}, Row{48, "imgAlertType48"}, Row{64, "imgAlertType64"},
        Row{0, "imgAlertType48"}, Row{32, "imgAlertType48"}}) {
    ScriptedForms forms;
    forms.On<AlertBox>([&, name = image](AlertBox& box) {
      for (const Image* each : {&box.imgAlertType16, &box.imgAlertType48, &box.imgAlertType64}) {
        EXPECT_EQ(each->visible(), each->name() == name) << name;
      }
      EXPECT_EQ(box.caption(), u" S M S ");
      EXPECT_EQ(box.Text1.text(), u"Line 1\r\nLine 2");
      box.btnOk.UserPress();
    });
    ShowAlert(forms, u"Line 1\r\nLine 2", style, u" S M S ");
    EXPECT_EQ(forms.shown().size(), 1U);
  }
}

TEST(Alert, ADefectIsNotTakenForARunTimeError) {
  ScriptedForms forms;
  EXPECT_THROW(RunHandler(forms, [] { throw std::logic_error("a defect"); }), std::logic_error);
}

class ProgressTest : public testing::Test {
 protected:
  frmDisplay* window() { return forms_.Open<frmDisplay>(); }

  FixedClock clock_{{.year = 2024, .month = 3, .day = 1}};
  ScriptedForms forms_;
  Progress progress_{forms_, clock_};
};

TEST_F(ProgressTest, TheBarCyclesFrom1To99EverySecond) {
  progress_.Show(u"Please wait");
  frmDisplay& display = *window();
  EXPECT_EQ(display.Timer1.interval(), 1000);
  for (int tick = 1; tick <= 99; ++tick) display.Timer1.Tick();
  EXPECT_EQ(display.ProgressBar1.value(), 99);
  display.Timer1.Tick();
  EXPECT_EQ(display.ProgressBar1.value(), 1);
}

TEST_F(ProgressTest, CancelAndTheFrameSetTheFlagAndEndTheWindow) {
  for (const bool by_frame : {false, true}) {
    progress_.CancelRequested = false;
    progress_.Show(u"Please wait");
    frmDisplay& display = *window();
    by_frame ? display.UserClose() : display.Cancel_Process.UserPress();
    EXPECT_TRUE(progress_.CancelRequested);
    EXPECT_EQ(display.Timer1.interval(), 0);
    EXPECT_FALSE(display.loaded());
    EXPECT_EQ(window(), nullptr);
  }
}

TEST_F(ProgressTest, AStepShowsTheRowYieldsAndIsRepaintedAtMostTwentyTimesASecond) {
  bool pressed = false;
  forms_.OnYield([&] { pressed = pressed || window() != nullptr; });
  progress_.Step(u"Row ", 2);
  EXPECT_TRUE(pressed) << "the window is there when events run";
  EXPECT_EQ(window()->lblProgress.caption(), u"Row 2");
  for (std::int32_t row = 3; row <= 100; ++row) progress_.Step(u"Row ", row);
  EXPECT_EQ(window()->lblProgress.caption(), u"Row 2");
  clock_.Advance(50);
  progress_.Step(u"Row ", 101);
  EXPECT_EQ(window()->lblProgress.caption(), u"Row 101");
  EXPECT_EQ(forms_.yields(), 100);
  EXPECT_EQ(forms_.shown().size(), 1U);
}

TEST_F(ProgressTest, CancelIsWithinReachAgainAtTheNextStepAndInTheNextWindow) {
  progress_.Show(u"Please wait");
  progress_.HideCancel();
  EXPECT_FALSE(window()->Cancel_Process.visible());
  progress_.Step(u"Row ", 1);
  EXPECT_TRUE(window()->Cancel_Process.visible());
  progress_.HideCancel();
  progress_.Close();
  EXPECT_EQ(window(), nullptr);

  progress_.HideCancel();  // loads a window that nobody sees
  EXPECT_EQ(window(), nullptr);
  progress_.Show(u"Please wait");
  EXPECT_TRUE(window()->Cancel_Process.visible());
}

}  // namespace
}  // namespace quorvel
