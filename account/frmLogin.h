#pragma once

#include "account/context.h"
#include "platform/form.h"

namespace quorvel {

// Binds the add-in to one gateway account until logout.
class frmLogin : public Form {
 public:
  explicit frmLogin(const AddInContext& context);

  Label lblCRN{*this, "lblCRN", {10, 12, 62, 10}, u"C&RN"};
  TextBox txtCRN{*this, "txtCRN", {76, 8, 120, 16}};
  Label lblUserName{*this, "lblUserName", {10, 34, 62, 10}, u"&User name"};
  TextBox txtUserName{*this, "txtUserName", {76, 30, 120, 16}};
  Label lblPasswd{*this, "lblPasswd", {10, 56, 62, 10}, u"&Password"};
  TextBox txtPasswd{*this, "txtPasswd", {76, 52, 120, 16}, TextBox::Style::kPassword};
  Button cmdLogin{*this, "cmdLogin", {76, 78, 57, 18}, u"&Login", Button::Role::kDefault};
  Button cmdCancel{*this, "cmdCancel", {139, 78, 57, 18}, u"Cancel", Button::Role::kCancel};

 protected:
  void Form_Load() override;

 private:
  enum class Next { kDone, kAgain };

  void cmdLogin_Click();
  Next Attempt();
  bool CheckFields();
  bool FindServer();
  bool ValidateCrn();
  Text RequestLogin();
  // Acts on the reply; the message to show, empty for a reply that is no known code.
  Text Interpret(TextView reply);
  void RememberAccount();
  Next AskForProxy();

  const AddInContext& context_;
};

// Shows the login form when nobody is logged in; whether somebody is afterwards.
[[nodiscard]] bool EnsureLoggedIn(const AddInContext& context);

// Forgets the credentials. Nothing that is kept is removed.
void ForgetCredentials(Session& session);

}  // namespace quorvel
