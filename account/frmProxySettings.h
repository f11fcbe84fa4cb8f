#pragma once

#include "account/context.h"
#include "platform/form.h"

namespace quorvel {

// How posts reach the gateway.
class frmProxySettings : public Form {
 public:
  explicit frmProxySettings(const AddInContext& context);

  Label lblProxyType{*this, "lblProxyType", {10, 12, 62, 10}, u"Connection &type"};
  ComboBox cboProxyType{*this, "cboProxyType", {76, 8, 150, 16}};
  Label lblHostName{*this, "lblHostName", {10, 34, 62, 10}, u"Proxy &host"};
  TextBox txtHostName{*this, "txtHostName", {76, 30, 150, 16}};
  Label lblPort{*this, "lblPort", {10, 56, 62, 10}, u"&Port"};
  TextBox txtPort{*this, "txtPort", {76, 52, 50, 16}};
  Label lblUserName{*this, "lblUserName", {10, 78, 62, 10}, u"&User name"};
  TextBox txtUserName{*this, "txtUserName", {76, 74, 150, 16}};
  Label lblPassword{*this, "lblPassword", {10, 100, 62, 10}, u"Pass&word"};
  TextBox txtPassword{*this, "txtPassword", {76, 96, 150, 16}, TextBox::Style::kPassword};
  Button cmdOk{*this, "cmdOk", {106, 122, 57, 18}, u"OK", Button::Role::kDefault};
  Button cmdCancel{*this, "cmdCancel", {169, 122, 57, 18}, u"Cancel", Button::Role::kCancel};

 protected:
  void Form_Load() override;

 private:
  void cmdOk_Click();
  bool CheckProxy();

  const AddInContext& context_;
};

}  // namespace quorvel
