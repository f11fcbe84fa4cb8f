#include "addin/common/AlertBox.h"

#include <algorithm>

#include "platform/forms.h"

namespace quorvel {

namespace {

constexpr int kImageLeft = 9;  // 200 twips
constexpr int kWidth = 230;
constexpr int kMargin = 8;
constexpr int kTextLeft = 38;
constexpr int kLineHeight = 9;
constexpr int kTextFrame = 4;   // what a box takes beyond its lines
constexpr int kLeastArea = 24;  // the image's
constexpr int kMostLines = 14;  // longer messages are scrolled
constexpr std::size_t kLineUnits = 36;

// Enough for the message when its lines are wrapped.
int TextHeight(TextView message) {
  std::size_t lines = 0;
  for (const Text& line : Split(message, kCrLf)) lines += 1 + line.size() / kLineUnits;
  return kLineHeight * static_cast<int>(std::min<std::size_t>(lines, kMostLines)) + kTextFrame;
}

int AreaHeight(TextView message) {
  return std::max(TextHeight(message), kLeastArea);
}

}  // namespace

AlertBox::AlertBox(TextView message, int style, TextView title)
    : Form("AlertBox", title, kWidth, AreaHeight(message) + 40), style_(style) {
  for (Image* image : {&imgAlertType16, &imgAlertType48, &imgAlertType64}) image->set_visible(false);
  Image& chosen = style == kCritical      ? imgAlertType16
                  : style == kInformation ? imgAlertType64
                                          : imgAlertType48;
  chosen.set_visible(true);
  chosen.set_bounds({kImageLeft, kImageBounds.y, kImageBounds.width, kImageBounds.height});
  Text1.set_read_only(true);
  Text1.set_text(message);
  const int area = AreaHeight(message);
  const int height = TextHeight(message);
  Text1.set_bounds({kTextLeft, kMargin + (area - height) / 2, kWidth - kTextLeft - kMargin, height});
  btnOk.set_bounds({(kWidth - 56) / 2, area + 2 * kMargin, 56, 16});
  btnOk.on_click = [this] { btnOk_Click(); };
}

}  // namespace quorvel
