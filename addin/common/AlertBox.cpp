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
constexpr int kLeastLines = 3;  // the height of the image
constexpr int kMostLines = 14;  // longer messages are scrolled
constexpr std::size_t kLineUnits = 42;

// Roughly: the window system wraps by the letters' widths.
int LinesOf(TextView message) {
  std::size_t lines = 0;
  for (const Text& line : Split(message, kCrLf)) lines += 1 + line.size() / kLineUnits;
  return static_cast<int>(std::min<std::size_t>(lines, kMostLines));
}

int MessageHeight(TextView message) {
  return kLineHeight * std::max(LinesOf(message), kLeastLines);
}

}  // namespace

AlertBox::AlertBox(TextView message, int style, TextView title)
    : Form("AlertBox", title, kWidth, MessageHeight(message) + 40), style_(style) {
  for (Image* image : {&imgAlertType16, &imgAlertType48, &imgAlertType64}) image->set_visible(false);
  Image& chosen = style == kCritical      ? imgAlertType16
                  : style == kInformation ? imgAlertType64
                                          : imgAlertType48;
  chosen.set_visible(true);
  chosen.set_bounds({kImageLeft, kImageBounds.y, kImageBounds.width, kImageBounds.height});
  Text1.set_read_only(true);
  Text1.set_text(message);
  // The middle of a short message is that of the image.
  const int above = (MessageHeight(message) - kLineHeight * LinesOf(message)) / 2;
  Text1.set_bounds(
      {kTextLeft, kMargin + above, kWidth - kTextLeft - kMargin, MessageHeight(message) - above});
  btnOk.set_bounds({(kWidth - 56) / 2, MessageHeight(message) + 2 * kMargin, 56, 16});
  btnOk.on_click = [this] { btnOk_Click(); };
}

}  // namespace quorvel
