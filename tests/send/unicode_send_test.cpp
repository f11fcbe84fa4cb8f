#include <gmock/gmock.h>

#include "addin/common/frmDisplay.h"
#include "platform/runtime_error.h"
#include "preview/frmPreviewSMS.h"
#include "send/hex_text.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(HexText, FourDigitsForEachUnit) {
  struct Row {
    Text text, hex;
  };
  for (const auto& [text, hex] :
       {Row{u"A", u"0041"}, Row{u"", u"0020"}, Row{u"  ", u"0020"}, Row{u" a ", u"002000610020"},
        Row{u"\u0627\u8BDD\uFFFF\u0001", u"06278BDDFFFF0001"}, Row{u"\U0001F600", u"D83DDE00"},
        Row{Text(32767, u'1').substr(32766), u"0031"},
        Row{Text(32768, u'1'), u"Error In StringToHex Function : Overflow"}}) {
    EXPECT_EQ(conStringToHex(text), hex);
    EXPECT_EQ(conHexToString(text), hex);
  }
  EXPECT_EQ(conStringToHex(Text(32767, u'1')).size(), 4U * 32767);
}

TEST(HexText, TemplatesComeBackAsTwoDigitsACharacter) {
  EXPECT_EQ(GetStringFromHex(u"", Windows1252()), u"");
  EXPECT_EQ(GetStringFromHex(u"4869e980F", Windows1252()), u"Hi\u00E9\u20AC\u000F");
  for (const TextView bad : {u"4G", u"zz", u"41 "}) {
    EXPECT_THROW(static_cast<void>(GetStringFromHex(bad, Windows1252())), RuntimeError) << ToUtf8(bad);
  }
}

class UnicodeSendTest : public SendTest {};

TEST_F(UnicodeSendTest, TextAndCellsTravelAsHex) {
  Fill({{Text(u"1"), Text(u"A\u00F1")}, {Text(u"+44 2"), {}}, {Text(u"3"), Text(u"\u0001\u0002\u007F#")}});
  const auto request = Send(u"\u0416 #B#");
  EXPECT_EQ(request.object, "Tools/Excel_Plugin/SaveBulkSMS.aspx");
  EXPECT_EQ(request.body, UnicodeBody("1,+442,3", "04160020002300420023",
                                      "B%01004100F1\x7F"
                                      "B%010020\x7F"
                                      "B%0100020023"));
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u"3 SMS Messages Sent", kInformation, u"S M S Application"}));
}

TEST_F(UnicodeSendTest, OptionsOfTheBody) {
  Fill({{Text(u"1"), Text(u"a@x")}, {Text(u"2"), Text(u"b@x")}});
  pulled_ = "|SenderIDs_Data|ALERT|sid|";
  EXPECT_EQ(Send(u"\u0416",
                 [](frmSendSMS& form) {
                   form.chkFlash.UserSet(true);  // Unicode is a service of its own
                   form.Combo_SenderID.UserType(u" A B ");
                   form.cmdEmailPanel.UserPress();
                   form.Chk_SendEmail.UserSet(true);
                   form.txtEmailSubject.UserType(u"\u0416!");
                   form.Combo_EmailColumn.UserSelect(2);
                 })
                .body,
            UnicodeBody("1,2", "0416", "",
                        "A+B&sendEmail=1&EmailSubject=04160021&EmailAdresses=a%40x%2Cb%40x&FromEmailID="
                        "&FromEmailPwd="));
}

TEST_F(UnicodeSendTest, OnlyNumericNumbersAreTaken) {
  Fill({{Text(u"1")}, {Text(u"12a")}, {{}}, {Text(u"2")}, {Text(u"mobile")}});
  EXPECT_EQ(Send(u"\u0416").body, UnicodeBody("1,2", "0416", ""));
  NewAlerts();
  const auto rows = [](TextView list) {
    return [list](frmSendSMS& form) {
      form.optRows.UserChoose();
      form.txtRows.UserType(list);
    };
  };
  ExpectNotSent(u"\u0416", rows(u"2, 3, 5"));
  ExpectNotSent(u"\u0416", rows(u"6-9"));
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u"Invalid mobile number in column of A", kInformation, u"S M S"},
                                       Alert{u"There Is No Mobile Number In Specified Range.", kInformation,
                                             Text(kSendTitle)}));
}

TEST_F(UnicodeSendTest, SeventyUnitsAreAskedForOnce) {
  Fill({{Text(u"1"), Text(u"x")}, {Text(u"2"), Text(u"yy")}, {Text(u"3"), Text(u"zzz")}});
  Send(Text(70, u'\u0627'));
  Send(Text(68, u'\u0627') + u"\U0001F600");  // 69 characters, 70 units
  EXPECT_THAT(forms_.questions(), IsEmpty());

  forms_.AnswerNext(Answer::kOk);
  EXPECT_THAT(Send(Text(69, u'\u0627') + u"#B#").body, Not(HasSubstr("IsConcatSMS")));
  EXPECT_THAT(
      forms_.questions(),
      ElementsAre(ScriptedForms::Question{
          u"SMS message contains more than 70 characters for the row(2). \r\nWould you like to send more "
          u"than 70 characters.",
          1,
          u"S M S",
          {}}));
  for (const Text& message : {Text(71, u'\u0627'), Text(69, u'\u0627') + u"\U0001F600"}) {
    forms_.AnswerNext(Answer::kCancel);
    ExpectNotSent(message, {}, SendOutcome::kCancelled);
  }
}

TEST_F(UnicodeSendTest, ThePreviewShowsPlainText) {
  Fill({{Text(u"1"), Text(u"Ann")}});
  Text shown;
  forms_.On<frmPreviewSMS>([&](frmPreviewSMS& preview) {
    shown = preview.txt_msg.text();
    preview.cmdCancel.UserPress();
  });
  ExpectNotSent(u"\u0416 #B#", ChoosePreview, SendOutcome::kCancelled);
  EXPECT_EQ(shown, u"\u0416 Ann");
}

TEST_F(UnicodeSendTest, GoesOutAtOnceUnescapedHoweverMany) {
  FillNumbers(1002);
  std::vector<Text> texts;
  forms_.OnYield([&] {
    if (const auto* window = forms_.Open<frmDisplay>()) texts.push_back(window->lblProgress.caption());
  });
  forms_.AnswerNext(Answer::kYes);
  const auto request = Send(u"<\u0416>", ChooseSchedule);
  EXPECT_EQ(request.object, "Tools/Excel_Plugin/SaveBulkSMS.aspx");
  EXPECT_THAT(request.body, HasSubstr("&message=003C0416003E&"));
  EXPECT_THAT(request.body, Not(HasSubstr("schedulerName")));
  EXPECT_EQ(texts.back(), u"Please wait - Sending SMS Messages 1002");
  EXPECT_EQ(NewAlerts().front().message, u"1002 SMS Messages Sent");
}

}  // namespace
}  // namespace quorvel
