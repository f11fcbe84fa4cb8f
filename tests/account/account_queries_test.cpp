#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "account/frmLogin.h"
#include "tests/support/addin_test.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AccountQueriesTest : public AddInTest {
 protected:
  // The user logs in as soon as asked.
  void LogInWhenAsked(TextView user, TextView password) {
    internet_.Answer("[Success]h1.example");
    internet_.Answer("000");
    forms_.On<frmLogin>([user, password](frmLogin& form) {
      form.txtUserName.UserType(user);
      form.txtPasswd.UserType(password);
      form.txtCRN.UserType(u"C1");
      form.cmdLogin.UserPress();
    });
  }

  [[nodiscard]] std::optional<Text> KeptModes() const {
    return settings_.Read({u"Tessaly", u"STARTUP", u"MODES"});
  }
};

TEST_F(AccountQueriesTest, TheBalanceIsAskedForWithTheScrambledPassword) {
  LogInWhenAsked(u" joe & co ", u"ab");
  internet_.Answer("<SMS>120</SMS>");
  clock_.SetNow({.year = 2024, .month = 3, .day = 1, .hour = 12, .minute = 30, .second = 45});  // key 9
  connect_.GetBalance();
  const ScriptedInternet::Request& request = internet_.requests().back();
  EXPECT_EQ(request.server, u"h1.example");
  EXPECT_EQ(request.port, 80);
  EXPECT_EQ(request.object, "Merrow/Get_Balance.asp");
  EXPECT_EQ(request.body, "user=joe & co&passwd=k%09k%02");
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u"Logged in successfully", kInformation, u"S M S"},
                                       Alert{u"Your credit balance is 120", kInformation, u" S M S "}));
}

TEST_F(AccountQueriesTest, ABalanceNeedsItsWholeEnvelope) {
  LogIn();
  const Alert refused{u"Error occured while retrieving SMS balance credits", kCritical, u" S M S "};
  struct Row {
    std::string_view reply;
    Alert alert;
  };
  for (const auto& [reply, alert] :
       {Row{"<SMS></SMS>", {u"Your credit balance is ", kInformation, u" S M S "}},
        Row{"<SMS>1<SMS>2</SMS></SMS>", {u"Your credit balance is 12", kInformation, u" S M S "}},
        Row{"<SMS>120", refused}, Row{"120</SMS>", refused}, Row{"002", refused}, Row{"", refused}}) {
    internet_.Answer(reply);
    connect_.GetBalance();
    EXPECT_THAT(NewAlerts(), ElementsAre(alert)) << reply;
  }
}

TEST_F(AccountQueriesTest, APasswordThatCannotBeScrambledIsReportedAndSendsNothing) {
  LogInWhenAsked(u"joe", u"\u00FF");
  connect_.Login();
  EXPECT_EQ(NewAlerts().size(), 1U);
  EXPECT_EQ(NewRequests().size(), 2U);
  connect_.GetBalance();
  EXPECT_THAT(NewAlerts(), ElementsAre(GeneralError(u"Invalid procedure call or argument")));
  EXPECT_THAT(NewRequests(), IsEmpty());
}

TEST_F(AccountQueriesTest, ModesAreFetchedFromThePlaceholderAlsoAfterALogin) {
  internet_.Answer("<SMS>L-x,Q-y</SMS>");
  connect_.GetModes();
  EXPECT_EQ(KeptModes(), u"L-x,Q-y");
  LogIn();
  for (const std::string_view reply : {"", "L-x", "<SMS>L-x"}) {
    internet_.Answer(reply);
    connect_.GetModes();
    EXPECT_EQ(internet_.requests().back().object, "http://192.168.0.1/Merrow/Get_Modes.asp");
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u"Error occured while retrieving mode of submissions",
                                               kInformation, u" S M S "}));
    EXPECT_EQ(KeptModes(), u"L-x,Q-y");
  }
  internet_.Answer("<SMS></SMS>");
  connect_.GetModes();
  EXPECT_THAT(NewAlerts(),
              ElementsAre(Alert{u"Mode of submissions has been downloaded", kInformation, u" S M S "}));
  EXPECT_EQ(KeptModes(), u"");
  connect_.OnConnection();
  EXPECT_TRUE(KeptModes()->starts_with(u"L-"));
}

}  // namespace
}  // namespace quorvel
