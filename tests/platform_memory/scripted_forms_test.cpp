#include "platform/memory/scripted_forms.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace quorvel {
namespace {

struct AskingForm : Form {
  AskingForm() : Form("AskingForm", u"Ask", 10, 10) {
    cmdOk.on_click = [this] { Unload(); };
  }

  Button cmdOk{*this, "cmdOk", {}, u"OK"};
};

struct OtherForm : Form {
  OtherForm() : Form("OtherForm", u"Other", 10, 10) {}
};

TEST(ScriptedForms, PlaysTheScriptOfTheFormsType) {
  ScriptedForms forms;
  int asked = 0;
  forms.On<AskingForm>([&](AskingForm& form) {
    ++asked;
    form.cmdOk.UserPress();
  });
  for (int i = 0; i < 2; ++i) {
    AskingForm form;
    forms.ShowModal(form);
    EXPECT_FALSE(form.loaded());
  }
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(forms.shown(), (std::vector<std::string>{"AskingForm", "AskingForm"}));
}

TEST(ScriptedForms, AFormThatNobodyEndsIsAFault) {
  ScriptedForms forms;
  forms.On<AskingForm>([](AskingForm&) {});
  AskingForm left_open;
  EXPECT_THROW(forms.ShowModal(left_open), std::logic_error);
  OtherForm without_script;
  EXPECT_THROW(forms.ShowModal(without_script), std::logic_error);
}

TEST(ScriptedForms, ModelessFormsStayOpenUntilTheyEnd) {
  ScriptedForms forms;
  AskingForm unloaded;
  forms.Show(unloaded);
  EXPECT_EQ(forms.Open<AskingForm>(), &unloaded);
  EXPECT_EQ(forms.Open<OtherForm>(), nullptr);
  forms.OnYield([&] { forms.Open<AskingForm>()->cmdOk.UserPress(); });
  forms.Yield();
  EXPECT_EQ(forms.Open<AskingForm>(), nullptr);

  std::optional<OtherForm> destroyed(std::in_place);
  forms.Show(*destroyed);
  destroyed.reset();
  EXPECT_EQ(forms.Open<OtherForm>(), nullptr);
}

TEST(ScriptedForms, AFormMayOutliveItsWindowSystem) {
  AskingForm form;
  {
    ScriptedForms forms;
    forms.Show(form);
  }
  form.cmdOk.set_caption(u"Still here");
  EXPECT_TRUE(form.loaded());
}

TEST(ScriptedForms, AnswersComeInTheOrderOfTheQuestions) {
  ScriptedForms forms;
  forms.AnswerNext(Answer::kYes);
  forms.AnswerNext(u"typed");
  EXPECT_EQ(forms.MsgBox(u"Noted", kOkOnly | kInformation, u"T"), Answer::kOk);
  EXPECT_EQ(forms.MsgBox(u"Go on?", kYesNo | kCritical, u"T"), Answer::kYes);
  EXPECT_EQ(forms.InputBox(u"Which?", u"T", u"initial"), u"typed");
  ASSERT_EQ(forms.questions().size(), 3U);
  EXPECT_EQ(forms.questions()[1], (ScriptedForms::Question{u"Go on?", kYesNo | kCritical, u"T", u""}));
  EXPECT_EQ(forms.questions()[2], (ScriptedForms::Question{u"Which?", 0, u"T", u"initial"}));
}

TEST(ScriptedForms, AnUnforeseenQuestionOrAnAnswerThatIsNotOfferedIsAFault) {
  ScriptedForms forms;
  EXPECT_THROW(forms.MsgBox(u"Go on?", kYesNo, u"T"), std::logic_error);
  forms.AnswerNext(Answer::kYes);
  EXPECT_THROW(forms.MsgBox(u"Go on?", kOkCancel, u"T"), std::logic_error);
  forms.AnswerNext(u"text");
  EXPECT_THROW(forms.MsgBox(u"Go on?", kYesNo, u"T"), std::logic_error);
}

}  // namespace
}  // namespace quorvel
