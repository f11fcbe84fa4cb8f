#include "hosts/console/console_forms.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "addin/common/alert.h"
#include "addin/common/progress.h"
#include "hosts/console/interrupts.h"
#include "platform/memory/fixed_clock.h"

namespace quorvel {
namespace {

class ConsoleFormsTest : public testing::Test {
 protected:
  void SetUp() override {
    InstallInterrupts();
    ClearInterrupts();
  }
  void TearDown() override {
    ClearInterrupts();
    std::signal(SIGINT, SIG_DFL);
  }

  std::ostringstream results_;
  std::ostringstream messages_;
  Output output_{results_, messages_, false};
  Terminal terminal_{false, false};
  FixedClock clock_{{.year = 2024, .month = 3, .day = 1, .hour = 12}};
  ConsoleForms forms_{{output_, terminal_, clock_, false}};
};

TEST_F(ConsoleFormsTest, AnAlertIsAMessageWithoutControlCharacters) {
  ShowAlert(forms_, u"two\r\nlines \x1B[2J", kWarning, u"SMS");
  EXPECT_EQ(messages_.str(), "SMS: two\nlines \uFFFD[2J\n");
  EXPECT_EQ(output_.LastMessage(), u"two\r\nlines \x1B[2J");
}

TEST_F(ConsoleFormsTest, AQuestionThatNobodyAnswersIsCancelled) {
  EXPECT_EQ(forms_.MsgBox(u"Noted.", kOkOnly | kInformation, u"SMS"), Answer::kOk);
  EXPECT_FALSE(forms_.unanswered());
  EXPECT_EQ(forms_.MsgBox(u"Sure?", kYesNo | kInformation, u"SMS"), Answer::kNo);
  EXPECT_EQ(forms_.MsgBox(u"Sure?", kOkCancel, u"SMS"), Answer::kCancel);
  EXPECT_TRUE(forms_.unanswered());
}

TEST_F(ConsoleFormsTest, YesGoesOnExceptToProxySettingsThatNobodyCanEdit) {
  ConsoleForms willing({output_, terminal_, clock_, true});
  EXPECT_EQ(willing.MsgBox(u"Sure?", kYesNo | kInformation, u"SMS"), Answer::kYes);
  EXPECT_EQ(willing.MsgBox(u"Sure?", kOkCancel, u"SMS"), Answer::kOk);
  EXPECT_EQ(willing.MsgBox(u"No Response!!!\r\nDo You Want To Edit Proxy Settings?", kYesNo, u"S M S"),
            Answer::kNo);
  EXPECT_FALSE(willing.unanswered());
}

TEST_F(ConsoleFormsTest, AnInterruptPressesTheCancelButtonWhereThereIsOne) {
  Progress progress(forms_, clock_);
  progress.Show(u"Please wait");
  EXPECT_FALSE(progress.CancelRequested);
  std::raise(SIGINT);
  progress.Step(u"Row ", 1);
  EXPECT_TRUE(progress.CancelRequested);
  EXPECT_TRUE(forms_.cancelled());
  EXPECT_NO_THROW(forms_.Yield());  // one press is one cancel
}

TEST_F(ConsoleFormsTest, AnInterruptWithoutProgressEndsTheCommand) {
  std::raise(SIGINT);
  EXPECT_TRUE(forms_.WantsToGiveUp());
  EXPECT_THROW(forms_.Yield(), Interrupted);
}

TEST_F(ConsoleFormsTest, WhatCanNoLongerBeCancelledTakesASecondInterrupt) {
  Progress progress(forms_, clock_);
  progress.Show(u"Please wait - Sending SMS...");
  progress.HideCancel();
  EXPECT_FALSE(forms_.WantsToGiveUp());
  std::raise(SIGINT);
  forms_.Yield();
  EXPECT_FALSE(forms_.WantsToGiveUp());
  EXPECT_FALSE(progress.CancelRequested);
  std::raise(SIGINT);
  EXPECT_TRUE(forms_.WantsToGiveUp());
}

}  // namespace
}  // namespace quorvel
