#include "addin/common/AlertBox.h"

#include "platform/forms.h"

namespace quorvel {

namespace {

constexpr int kImageLeft = 9;  // 200 twips

}  // namespace

AlertBox::AlertBox(TextView message, int style, TextView title)
    : Form("AlertBox", title, 270, 102), style_(style) {
  for (Image* image : {&imgAlertType16, &imgAlertType48, &imgAlertType64}) image->set_visible(false);
  Image& chosen = style == kCritical      ? imgAlertType16
                  : style == kInformation ? imgAlertType64
                                          : imgAlertType48;
  chosen.set_visible(true);
  chosen.set_bounds({kImageLeft, kImageBounds.y, kImageBounds.width, kImageBounds.height});
  Text1.set_read_only(true);
  Text1.set_text(message);
  btnOk.on_click = [this] { btnOk_Click(); };
}

}  // namespace quorvel
