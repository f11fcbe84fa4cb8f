#pragma once

#include "platform/form.h"

namespace quorvel {

// The add-in's own message box, for messages with one button; as high as its message.
class AlertBox : public Form {
 public:
  AlertBox(TextView message, int style, TextView title);

  Image imgAlertType16{*this, "imgAlertType16", kImageBounds, Image::Icon::kCritical};
  Image imgAlertType48{*this, "imgAlertType48", kImageBounds, Image::Icon::kWarning};
  Image imgAlertType64{*this, "imgAlertType64", kImageBounds, Image::Icon::kInformation};
  TextBox Text1{*this, "Text1", {}, TextBox::Style::kMultiLine};
  Button btnOk{*this, "btnOk", {}, u"OK", Button::Role::kDefault};

  [[nodiscard]] int style() const { return style_; }

 private:
  static constexpr Bounds kImageBounds{0, 10, 21, 20};

  void btnOk_Click() { Unload(); }

  int style_;
};

}  // namespace quorvel
