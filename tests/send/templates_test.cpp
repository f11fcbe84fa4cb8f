#include <gmock/gmock.h>

#include "account/frmLogin.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kPage = "Tools/Excel_Plugin/SaveUserMessageExcel07.asp";
constexpr std::string_view kPull = "getMsg=Yes&user=joe@x&passwd=p%40w&ver=1.3";
constexpr std::string_view kThree =
    "0One|msg_name|first|msg_text|1C4|msg_name|4869|msg_text|xHi|msg_name||msg_text||SenderIDs_Data|";

class TemplatesTest : public SendTest {
 protected:
  std::string LastBody() {
    EXPECT_EQ(internet_.requests().back().object, kPage);
    return internet_.requests().back().body;
  }
  std::vector<Text> Messages() {
    std::vector<Text> messages;
    for (const Alert& alert : NewAlerts()) messages.push_back(alert.message);
    return messages;
  }
};

TEST_F(TemplatesTest, APullFillsNamesTextsAndSenderIds) {
  struct Row {
    std::string_view answer;
    std::vector<Text> names, texts, ids;
    std::size_t alerts;
  };
  const Row rows[] = {
      {kThree, {u"One", u"\u00C4", u"Hi"}, {u"first", u"Hi", u""}, {}, 0},
      {"0a|msg_name|#B#|msg_name|x|msg_text||SenderIDs_Data|SHOP|sid|A B|sid|rest",
       {u"a"},
       {u"#B#|msg_name|x"},
       {u"SHOP", u"A B"},
       0},
      {"|SenderIDs_Data|A|sid|B|sid||SenderIDs_Data|C|sid|", {}, {}, {u"A", u"B"}, 0},
      {"|SenderIDs_Data|A", {}, {}, {}, 0},
      {"0a|MSG_NAME|b|MSG_TEXT|", {}, {}, {}, 0},
      {"", {}, {}, {}, 0},
      {"002", {}, {}, {}, 0},
      {"0a|msg_name|b|msg_text|", {}, {}, {}, 1},                                    // no sender ID part
      {"0a|msg_name|b|msg_text|0c|msg_text||SenderIDs_Data|A|sid|", {}, {}, {}, 1},  // no name
      {"|msg_name|b|msg_text||SenderIDs_Data|", {}, {}, {}, 1},                      // no flag
      {"14G|msg_name|41|msg_text||SenderIDs_Data|A|sid|", {}, {}, {}, 1}};           // no hex
  for (const Row& row : rows) {
    WithSendForm(
        [&](frmSendSMS& form) {
          EXPECT_EQ(LastBody(), kPull);
          EXPECT_EQ(form.combo_display_MsgNames.items(), row.names) << row.answer;
          EXPECT_EQ(form.template_texts(), row.texts) << row.answer;
          EXPECT_EQ(form.Combo_SenderID.items(), row.ids) << row.answer;
          Text list;
          for (const Text& id : row.ids) list += u"," + id;
          EXPECT_EQ(form.sender_id_list(), list);
          EXPECT_EQ(form.Combo_SenderID.shown(), !row.ids.empty()) << row.answer;
          EXPECT_EQ(form.Label10.shown(), !row.ids.empty());
          EXPECT_FALSE(form.btn_getTemplates.visible());
          EXPECT_FALSE(form.cmd_GetSenderIDs.visible());
          EXPECT_EQ(form.chkBox_SaveMsg.value(), row.names.empty());
        },
        row.answer);
    EXPECT_EQ(NewAlerts().size(), row.alerts) << row.answer;
  }
}

TEST_F(TemplatesTest, AChosenNameBringsItsText) {
  WithSendForm(
      [&](frmSendSMS& form) {
        EXPECT_FALSE(form.btn_DeleteMsg.visible());
        form.combo_display_MsgNames.UserSelect(1);
        EXPECT_EQ(form.txtMsg_RTB.text(), u"Hi");
        EXPECT_EQ(form.txtMsg_TemplateBox.text(), u"Hi");
        EXPECT_TRUE(form.btn_DeleteMsg.visible());
        form.txtMsg_RTB.UserType(u"spoiled");
        form.combo_display_MsgNames.UserSelect(1);
        EXPECT_EQ(form.txtMsg_RTB.text(), u"Hi") << "chosen once more, it comes once more";
        form.txtMsg_TemplateBox.UserType(u"Hi there");
        EXPECT_EQ(form.txtMsg_RTB.text(), u"Hi");
        form.btn_addTemplateToMsgBox.UserPress();
        EXPECT_EQ(form.txtMsg_RTB.text(), u"Hi there");
      },
      kThree);
}

TEST_F(TemplatesTest, APullAfterADeletionPairsNamesAndTextsAgain) {
  WithSendForm([&](frmSendSMS& form) {
    form.txtMsg_RTB.UserType(u"mine");
    form.txt_MsgName.UserType(u"Mine");
    internet_.Answer("Saved!");
    form.SaveMsgText.UserPress();
    form.combo_display_MsgNames.UserSelect(0);
    forms_.AnswerNext(Answer::kYes);
    internet_.Answer("Successfully Deleted!!!");
    form.btn_DeleteMsg.UserPress();
    form.chkBox_SaveMsg.UserSet(false);
    internet_.Answer(kThree);
    form.btn_getTemplates.UserPress();
    ASSERT_EQ(form.combo_display_MsgNames.list_count(), 3);
    form.combo_display_MsgNames.UserSelect(0);
    EXPECT_EQ(form.txtMsg_RTB.text(), u"first");
  });
}

TEST_F(TemplatesTest, PullsOnceWhoeverAsks) {
  connect_.Logout();
  NewAlerts();
  int logins = 0;
  WithSendForm([&](frmSendSMS& form) {
    forms_.On<frmLogin>([&](frmLogin& login) {
      ++logins;
      login.cmdCancel.UserPress();
    });
    form.btn_getTemplates.UserPress();
    form.cmd_GetSenderIDs.UserPress();
    EXPECT_EQ(logins, 2);
    EXPECT_THAT(NewRequests(), IsEmpty());

    forms_.On<frmLogin>([&](frmLogin& login) {
      login.txtPasswd.UserType(u"p@w");
      login.cmdLogin.UserPress();
    });
    internet_.Answer("000");
    internet_.Answer(kThree);
    form.TimerPullSIDnTemplates.Tick();
    EXPECT_EQ(NewRequests().size(), 2U);
    EXPECT_EQ(form.TimerPullSIDnTemplates.interval(), 0);
    EXPECT_EQ(form.combo_display_MsgNames.list_count(), 3);
    form.TimerPullSIDnTemplates.Tick();
    form.btn_getTemplates.set_visible(true);
    form.btn_getTemplates.UserPress();
    EXPECT_THAT(NewRequests(), IsEmpty());
  });
  WithSendForm([&](frmSendSMS& form) {
    form.TimerPullSIDnTemplates.Tick();  // logged in: the form has pulled already
    EXPECT_THAT(NewRequests(), IsEmpty());
  });
}

TEST_F(TemplatesTest, SavingAsksForATextAndAName) {
  WithSendForm(
      [&](frmSendSMS& form) {
        EXPECT_FALSE(form.SaveMsgText.visible());
        form.chkBox_SaveMsg.UserSet(true);
        EXPECT_EQ(form.txt_MsgName.text(), u"Enter Msg Name");
        form.SaveMsgText.UserPress();
        form.txtMsg_RTB.UserType(u"x");
        form.SaveMsgText.UserPress();
        EXPECT_EQ(form.active_control(), &form.txt_MsgName);
        form.txt_MsgName.UserClick();
        EXPECT_EQ(form.txt_MsgName.text(), u"");
        form.SaveMsgText.UserPress();
        form.chkBox_SaveMsg.UserSet(false);
        EXPECT_FALSE(form.txt_MsgName.visible() || form.SaveMsgText.visible() ||
                     form.btn_getTemplates.visible());
      },
      kThree);
  EXPECT_THAT(Messages(), ElementsAre(u"There is no SMS message found!!!", u"Please Provide Msg Name!!!",
                                      u"Please Provide Msg Name!!!"));
  WithSendForm([](frmSendSMS& form) {  // there are no templates
    EXPECT_TRUE(form.SaveMsgText.enabled());
    form.chkBox_SaveMsg.UserSet(false);
    EXPECT_TRUE(form.btn_getTemplates.visible() && form.SaveMsgText.visible());
    EXPECT_FALSE(form.SaveMsgText.enabled());
  });
}

TEST_F(TemplatesTest, ASavedTemplateIsThereWhateverTheGatewayAnswers) {
  struct Row {
    TextView text, name;
    std::string_view body, answer;
  };
  for (const Row& row : {Row{u" Hi & #B# ", u"My name", "SaveMsg=+Hi+%26+%23B%23+&MsgName=My+name", "Saved!"},
                         Row{u"\u0416", u"Ab", "SaveMsg=0416&isUnicode=1&MsgName=00410062", "<ERROR>"},
                         Row{u"Hi", u"\u0416", "SaveMsg=Hi&MsgName=%3F", ""}}) {
    WithSendForm(
        [&](frmSendSMS& form) {
          form.chkBox_SaveMsg.UserSet(true);
          form.txtMsg_RTB.UserType(row.text);
          form.txt_MsgName.UserType(row.name);
          internet_.Answer(row.answer);
          form.SaveMsgText.UserPress();
          EXPECT_EQ(LastBody(), std::string(row.body) + "&user=joe@x&passwd=p%40w&ver=1.0");
          EXPECT_FALSE(form.txt_MsgName.visible() || form.SaveMsgText.visible());
          form.txtMsg_RTB.UserType(u"other");
          form.combo_display_MsgNames.UserSelect(3);
          EXPECT_EQ(form.combo_display_MsgNames.text(), row.name);
          EXPECT_EQ(form.txtMsg_RTB.text(), row.text);
        },
        kThree);
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{FromUtf8(row.answer), kInformation, u"SMS"}));
  }
}

TEST_F(TemplatesTest, ADeletionMovesTheNamesAndNotTheTexts) {
  WithSendForm(
      [&](frmSendSMS& form) {
        form.combo_display_MsgNames.UserSelect(0);
        forms_.AnswerNext(Answer::kNo);
        form.btn_DeleteMsg.UserPress();
        EXPECT_THAT(NewRequests(), IsEmpty());
        EXPECT_EQ(forms_.questions().back(),
                  (ScriptedForms::Question{u"Do You Really Want To Delete 'One'", 20, u"SMS", {}}));

        for (const std::string_view answer : {"successfully deleted!!!", "", "Successfully Deleted!!!"}) {
          EXPECT_EQ(form.combo_display_MsgNames.list_count(), 3);
          forms_.AnswerNext(Answer::kYes);
          internet_.Answer(answer);
          form.btn_DeleteMsg.UserPress();
        }
        EXPECT_EQ(LastBody(), "MsgName=One&delete=Y&user=joe@x&passwd=p%40w&ver=1.0");
        EXPECT_THAT(form.combo_display_MsgNames.items(), ElementsAre(u"\u00C4", u"Hi"));
        form.combo_display_MsgNames.UserSelect(0);
        EXPECT_EQ(form.txtMsg_RTB.text(), u"first");
        form.combo_display_MsgNames.UserSelect(1);
        EXPECT_EQ(form.txtMsg_RTB.text(), u"Hi");

        forms_.AnswerNext(Answer::kYes);
        internet_.Answer("Successfully Deleted!!!");
        form.btn_DeleteMsg.UserPress();
        form.btn_DeleteMsg.UserPress();  // nothing is selected any more
      },
      kThree);
  EXPECT_THAT(Messages(), ElementsAre(u"successfully deleted!!!", u"", u"Successfully Deleted!!!",
                                      u"Successfully Deleted!!!", u"Please Select Message Name!!!"));
}

TEST_F(TemplatesTest, NothingIsSavedWithoutALogin) {
  connect_.Logout();
  NewAlerts();
  forms_.On<frmLogin>([](frmLogin& login) { login.UserClose(); });
  WithSendForm([](frmSendSMS& form) {
    form.chkBox_SaveMsg.UserSet(true);
    form.txtMsg_RTB.UserType(u"Hi");
    form.txt_MsgName.UserType(u"name");
    form.SaveMsgText.UserPress();
    EXPECT_EQ(form.combo_display_MsgNames.list_count(), 0);
    EXPECT_TRUE(form.SaveMsgText.visible());
  });
  EXPECT_THAT(NewRequests(), IsEmpty());
  EXPECT_THAT(NewAlerts(), IsEmpty());
}

}  // namespace
}  // namespace quorvel
