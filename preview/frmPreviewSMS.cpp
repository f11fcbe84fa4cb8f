#include "preview/frmPreviewSMS.h"

#include "platform/numbers.h"
#include "preview/sms_count.h"

namespace quorvel {

namespace {

Text Number(std::int32_t value) {
  return NumberToText(value);
}

}  // namespace

frmPreviewSMS::frmPreviewSMS(PreviewState& state)
    : Form("frmPreviewSMS", u"Preview And Send SMS", 280, 226), state_(state) {
  for (TextBox* box : {&txt_mno, &txt_msg, &txt_msg_old, &txt_char_count, &txt_sms_count, &txt_LongSMSs}) {
    box->set_read_only(true);
  }
  txt_msg_old.set_visible(false);
  cmdPrevious.set_enabled(false);
  cmdNext.on_click = [this] { cmdNext_Click(); };
  cmdPrevious.on_click = [this] { cmdPrevious_Click(); };
  cmdContinueSMS.on_click = [this] { cmdContinueSMS_Click(); };
  cmdCancel.on_click = [this] { cmdCancel_Click(); };
  txt_msg.on_got_focus = [this] { txt_msg_GotFocus(); };
}

void frmPreviewSMS::Form_Load() {
  count_ = ToInteger(static_cast<double>(state_.PreviewMessages.size()));
  current_ = 1;
  ShowPreviewMessage(current_);
  ShowBatchTotal();
  txt_msg_GotFocus();
}

void frmPreviewSMS::ShowPreviewMessage(std::int16_t index) {
  const auto element = static_cast<std::size_t>(index - 1);
  txt_msg.set_text(state_.PreviewMessages.at(element));
  txt_mno.set_text(state_.PreviewMobileNumbers.at(element));
  const std::size_t length = txt_msg.text().size();
  txt_char_count.set_text(NumberToText(static_cast<double>(length)));
  if (state_.UnicodeMode) {
    txt_LongSMSs.set_text(Number(UnicodeLongSmsCount(length)));
    txt_sms_count.set_text(Number(UnicodeSmsCount(length)));
  } else {
    txt_LongSMSs.set_text(GsmLongSmsCount(length));
    // A short message leaves the count of the message before on show.
    if (length > 160) txt_sms_count.set_text(Number(GsmSmsCount(length)));
  }
  label_SMSCount.set_caption(Number(index) + u"/" + Number(count_));
  if (count_ == 1) {
    cmdPrevious.set_enabled(false);
    cmdNext.set_enabled(false);
  }
}

void frmPreviewSMS::ShowBatchTotal() {
  std::int16_t total = 0;
  for (const Text& message : state_.PreviewMessages) {
    const std::size_t length = message.size();
    total = AddInteger(total, state_.UnicodeMode ? ToInteger(static_cast<double>(UnicodeSmsCount(length)))
                                                 : GsmSmsCount(length));
  }
  label_Total_SMSs.set_caption(Number(total));
}

void frmPreviewSMS::cmdNext_Click() {
  if (current_ < count_) {
    ++current_;
    ShowPreviewMessage(current_);
  }
  cmdPrevious.set_enabled(true);
  if (current_ >= count_) cmdNext.set_enabled(false);
}

void frmPreviewSMS::cmdPrevious_Click() {
  if (current_ > 1) {
    --current_;
    ShowPreviewMessage(current_);
  }
  cmdNext.set_enabled(true);
  if (current_ < 2) cmdPrevious.set_enabled(false);
}

void frmPreviewSMS::cmdContinueSMS_Click() {
  state_.PreviewApproved = true;
  Unload();
}

void frmPreviewSMS::cmdCancel_Click() {
  state_.PreviewApproved = false;
  Unload();
}

void frmPreviewSMS::txt_msg_GotFocus() {
  (cmdNext.enabled() ? cmdNext : cmdContinueSMS).SetFocus();
}

bool ApprovePreview(Forms& forms, PreviewState& state) {
  state.PreviewApproved = false;
  {
    frmPreviewSMS preview(state);
    forms.ShowModal(preview);
  }
  state.PreviewMessages.clear();
  state.PreviewMobileNumbers.clear();
  return state.PreviewApproved;
}

}  // namespace quorvel
