#include "addin/common/AlertBox.h"

#include <algorithm>

#include "platform/forms.h"

namespace quorvel {

namespace {

constexpr int kImageLeft = 9;  // 200 twips
constexpr int kMargin = 8;
constexpr int kLineHeight = 8;
constexpr int kMostLines = 12;  // longer messages are scrolled
constexpr std::size_t kLineUnits = 52;

// Roughly how high the message is when its lines are wrapped; at least as high as the image.
int MessageHeight(TextView message) {
  std::size_t lines = 1;
  for (const Text& line : Split(message, kCrLf)) lines += 1 + line.size() / kLineUnits;
  return kLineHeight * std::clamp(static_cast<int>(lines), 3, kMostLines);
}

}  // namespace

AlertBox::AlertBox(TextView message, int style, TextView title)
    : Form("AlertBox", title, 270, MessageHeight(message) + 40), style_(style) {
  for (Image* image : {&imgAlertType16, &imgAlertType48, &imgAlertType64}) image->set_visible(false);
  Image& chosen = style == kCritical      ? imgAlertType16
                  : style == kInformation ? imgAlertType64
                                          : imgAlertType48;
  chosen.set_visible(true);
  chosen.set_bounds({kImageLeft, kImageBounds.y, kImageBounds.width, kImageBounds.height});
  Text1.set_read_only(true);
  Text1.set_text(message);
  Text1.set_bounds({38, kMargin, 226, MessageHeight(message)});
  btnOk.set_bounds({107, MessageHeight(message) + 2 * kMargin, 56, 16});
  btnOk.on_click = [this] { btnOk_Click(); };
}

}  // namespace quorvel
