#include "preview/frmPreviewSMS.h"

#include <gtest/gtest.h>

#include "platform/memory/scripted_forms.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {
namespace {

Text OfLength(std::size_t length) {
  return Text(length, u'x');
}

// Messages of these lengths, to the numbers 1, 2 and so on.
PreviewState Batch(const std::vector<std::size_t>& lengths, bool unicode = false) {
  PreviewState state;
  state.UnicodeMode = unicode;
  for (const std::size_t length : lengths) {
    state.PreviewMessages.push_back(OfLength(length));
    state.PreviewMobileNumbers.push_back(
        NumberToText(static_cast<std::int32_t>(state.PreviewMessages.size())));
  }
  return state;
}

// What the form shows of one message.
struct Shown {
  TextView place, number, characters, sms, long_sms;
};

void ExpectShown(const frmPreviewSMS& form, const Shown& shown) {
  EXPECT_EQ(form.label_SMSCount.caption(), shown.place);
  EXPECT_EQ(form.txt_mno.text(), shown.number);
  EXPECT_EQ(form.txt_char_count.text(), shown.characters);
  EXPECT_EQ(form.txt_sms_count.text(), shown.sms);
  EXPECT_EQ(form.txt_LongSMSs.text(), shown.long_sms);
}

void ExpectPaging(const frmPreviewSMS& form, bool previous, bool next) {
  EXPECT_EQ(form.cmdPrevious.enabled(), previous);
  EXPECT_EQ(form.cmdNext.enabled(), next);
}

TEST(FrmPreviewSMS, PagesThroughTheMessagesAndStopsAtBothEnds) {
  PreviewState state = Batch({300, 100, 460});
  frmPreviewSMS form(state);
  form.Load();
  EXPECT_EQ(form.caption(), u"Preview And Send SMS");
  EXPECT_EQ(form.label_Total_SMSs.caption(), u"7");
  EXPECT_EQ(form.txt_msg.text(), OfLength(300));
  ExpectShown(form, {u"1/3", u"1", u"300", u"2", u"1"});
  ExpectPaging(form, false, true);

  form.cmdNext.UserPress();
  ExpectShown(form, {u"2/3", u"2", u"100", u"2", u"1"});  // the SMS count of the message before stays
  ExpectPaging(form, true, true);
  form.cmdNext.UserPress();
  ExpectShown(form, {u"3/3", u"3", u"460", u"4", u"2"});
  ExpectPaging(form, true, false);

  form.cmdPrevious.UserPress();
  ExpectShown(form, {u"2/3", u"2", u"100", u"4", u"1"});
  ExpectPaging(form, true, true);
  form.cmdPrevious.UserPress();
  ExpectShown(form, {u"1/3", u"1", u"300", u"2", u"1"});
  ExpectPaging(form, false, true);
}

TEST(FrmPreviewSMS, ASingleShortMessageHasNoPagingAndNoSmsCount) {
  PreviewState state = Batch({160});
  frmPreviewSMS form(state);
  form.Load();
  ExpectShown(form, {u"1/1", u"1", u"160", u"", u"1"});
  ExpectPaging(form, false, false);
  form.txt_msg.UserFocus();
  EXPECT_EQ(form.active_control(), &form.cmdContinueSMS);
}

TEST(FrmPreviewSMS, UnicodeMessagesAreCountedInUtf16Units) {
  PreviewState state = Batch({63, 64, 190}, true);
  state.PreviewMessages[0].replace(0, 1, u"\U0001F600");  // one character more is two units: 64
  frmPreviewSMS form(state);
  form.Load();
  EXPECT_EQ(form.label_Total_SMSs.caption(), u"8");
  ExpectShown(form, {u"1/3", u"1", u"64", u"2", u"1"});
  form.cmdNext.UserPress();
  form.cmdNext.UserPress();
  ExpectShown(form, {u"3/3", u"3", u"190", u"4", u"2"});
}

TEST(FrmPreviewSMS, TheMessageBoxPassesTheFocusOn) {
  PreviewState state = Batch({1, 1});
  frmPreviewSMS form(state);
  form.Load();
  form.txt_msg.UserFocus();
  EXPECT_EQ(form.active_control(), &form.cmdNext);
  form.cmdNext.UserPress();
  form.txt_msg.UserFocus();
  EXPECT_EQ(form.active_control(), &form.cmdContinueSMS);
}

TEST(FrmPreviewSMS, TotalsAndPlacesBeyond16BitsOverflow) {
  constexpr std::size_t kMost = 32767;
  struct Row {
    std::vector<std::size_t> lengths;
    bool unicode = false;
    bool fits = false;
  };
  for (const auto& [lengths, unicode, fits] :
       {Row{std::vector<std::size_t>(kMost, 1), false, true},
        Row{std::vector<std::size_t>(kMost + 1, 1), false, false}, Row{{63 * kMost}, true, true},
        Row{{63 * kMost - 63, 63, 1}, true, false}}) {
    PreviewState state = Batch(lengths, unicode);
    frmPreviewSMS form(state);
    try {
      form.Load();
      EXPECT_TRUE(fits);
      EXPECT_EQ(form.label_Total_SMSs.caption(), u"32767");
    } catch (const RuntimeError& error) {
      EXPECT_FALSE(fits);
      EXPECT_EQ(error.number(), 6);
    }
  }
}

TEST(ApprovePreview, OnlyTheSendButtonApprovesAndTheListsAreEmptiedAnyway) {
  struct Row {
    void (*answer)(frmPreviewSMS&);
    bool approved;
  };
  for (const auto& [answer, approved] :
       {Row{[](frmPreviewSMS& form) { form.cmdContinueSMS.UserPress(); }, true},
        Row{[](frmPreviewSMS& form) { form.cmdCancel.UserPress(); }, false},
        Row{[](frmPreviewSMS& form) { form.UserClose(); }, false}}) {
    ScriptedForms forms;
    forms.On<frmPreviewSMS>(answer);
    PreviewState state = Batch({10, 20});
    state.PreviewApproved = true;  // the answer of an earlier send
    EXPECT_EQ(ApprovePreview(forms, state), approved);
    EXPECT_EQ(state.PreviewApproved, approved);
    EXPECT_TRUE(state.PreviewMessages.empty());
    EXPECT_TRUE(state.PreviewMobileNumbers.empty());
  }
}

}  // namespace
}  // namespace quorvel
