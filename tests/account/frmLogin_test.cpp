#include "account/frmLogin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "account/frmProxySettings.h"
#include "tests/support/addin_test.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kValidate = "Tools/Excel_Plugin/ValidateCRN.asp";
constexpr std::string_view kCheck = "Tools/Excel_Plugin/LoginCheck.asp";
constexpr TextView kLoggedIn = u"Logged in successfully";

// Which controls had their whole text selected.
class SelectionView : public FormView {
 public:
  void ControlChanged(const Control& control, Property property) override {
    if (property == Property::kSelectAll) selected = control.name();
  }
  void FocusMoved(const Control&) override {}
  void Closed() override {}

  std::string_view selected;
};

class FrmLoginTest : public AddInTest {
 protected:
  // What the user types.
  struct Fields {
    TextView user = u"joe";
    TextView password = u"secret";
    TextView crn = u"C1";
  };

  // How the form stood after the login button had been pressed once.
  struct After {
    bool open = false;
    std::string_view focus;
    std::string_view selected;
    Text user, password, crn;
  };

  After Login(const Fields& fields) {
    After after;
    SelectionView view;  // outlives the form
    forms_.On<frmLogin>([&](frmLogin& form) {
      form.txtUserName.UserType(fields.user);
      form.txtPasswd.UserType(fields.password);
      form.txtCRN.UserType(fields.crn);
      form.AttachView(&view);
      form.cmdLogin.UserPress();
      after = {form.loaded(),           form.active_control()->name(), view.selected,
               form.txtUserName.text(), form.txtPasswd.text(),         form.txtCRN.text()};
      form.cmdCancel.UserPress();
    });
    connect_.Login();
    return after;
  }

  // A session on h1.example, whose CRN "C1" is kept; what led to it is forgotten but for the requests.
  void StartLoggedIn() {
    internet_.Answer("[Success]h1.example");
    internet_.Answer("000");
    Login({});
    ASSERT_TRUE(connect_.session().LoggedIn);
    ASSERT_EQ(NewAlerts().size(), 1U);
  }

  void Keep(TextView key, TextView value) { settings_.Write({u"Tessaly", u"AuthDetails", key}, value); }
  [[nodiscard]] Text Kept(TextView key) const {
    return settings_.Read({u"Tessaly", u"AuthDetails", key}).value_or(u"(none)");
  }

  // Server, port, path and body of every request.
  [[nodiscard]] std::vector<std::string> Requests() const {
    std::vector<std::string> lines;
    for (const auto& request : internet_.requests()) {
      lines.push_back(ToUtf8(request.server) + ":" + std::to_string(request.port) + " " + request.object +
                      " " + request.body);
    }
    return lines;
  }
};

const std::string kGateway = ToUtf8(QUORVEL_GATEWAY_HOST) + ":80 ";

TEST_F(FrmLoginTest, TheFirstLoginValidatesTheCrnAndKeepsTheAccount) {
  internet_.Answer("[Success]h1.example");
  internet_.Answer("000");
  const After after = Login({u" joe & co ", u" p w! ", u" C1 "});
  EXPECT_FALSE(after.open);
  EXPECT_THAT(Requests(),
              ElementsAre(kGateway + std::string(kValidate) + " CRN= C1 ",
                          "h1.example:80 " + std::string(kCheck) + " user=joe+%26+co&passwd=p+w%21"));
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{Text(kLoggedIn), kInformation, u"S M S"}));
  EXPECT_THAT(forms_.pointers(),
              ElementsAre(Pointer::kBusy, Pointer::kDefault, Pointer::kBusy, Pointer::kDefault));

  const Session& session = connect_.session();
  EXPECT_TRUE(session.LoggedIn);
  EXPECT_EQ(session.UserName, u"joe & co");
  EXPECT_EQ(session.Password, u"p w!");
  EXPECT_EQ(session.ServerHost, u"h1.example");
  EXPECT_EQ(session.ServerBaseUrl, u"http://192.168.0.1");
  EXPECT_EQ(Kept(u"ClientUserName"), u"joe & co");
  EXPECT_EQ(Kept(u"ClientCRN"), u" C1 ");
  EXPECT_EQ(Kept(u"ServerURL"), u"h1.example");
  EXPECT_EQ(settings_.size(), 4U) << "these three and the modes";
}

TEST_F(FrmLoginTest, FieldsAreCheckedInOrderBeforeAnythingIsSent) {
  struct Row {
    Fields fields;
    TextView message;
    std::string_view focus;
  };
  for (const auto& [fields, message, focus] :
       {Row{{u"  ", u"", u""}, u"Please enter user name", "txtUserName"},
        Row{{u"joe", u" ", u""}, u"Please enter password", "txtPasswd"},
        Row{{u"joe", u"secret", u"   "},
            u"Please enter your CRN (Customer Relationship Number)",
            "txtCRN"}}) {
    const After after = Login(fields);
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{Text(message), kWarning, u"S M S"}));
    EXPECT_TRUE(after.open);
    EXPECT_EQ(after.focus, focus);
    EXPECT_EQ(focus == "txtUserName" ? after.user : focus == "txtPasswd" ? after.password : after.crn, u"");
  }
  EXPECT_THAT(Requests(), IsEmpty());
  EXPECT_EQ(connect_.session().ServerPort, 88);
}

TEST_F(FrmLoginTest, TheFormOpensWithTheAccountOfTheLastLoginAndCancelDoesNothing) {
  Keep(u"ClientUserName", u"joe");
  Keep(u"ClientCRN", u" C1");
  forms_.On<frmLogin>([](frmLogin& form) {
    EXPECT_EQ(form.txtUserName.text(), u"joe");
    EXPECT_EQ(form.txtCRN.text(), u" C1");
    EXPECT_EQ(form.txtPasswd.text(), u"");
    form.cmdCancel.UserPress();
  });
  connect_.Login();
  EXPECT_THAT(Requests(), IsEmpty());
  EXPECT_EQ(connect_.session().ServerPort, 88);
}

TEST_F(FrmLoginTest, TheCrnIsValidatedUnlessItAndItsServerAreKnown) {
  struct Row {
    TextView kept_server, kept_crn, crn;
    std::string first_request;  // its server
  };
  for (const auto& [kept_server, kept_crn, crn, server] :
       {Row{u"", u"", u"C1", kGateway}, Row{u"abc", u"C1", u"C1", kGateway},
        Row{u"  abc  ", u"C1", u"C1", kGateway}, Row{u"h1.example", u"c1", u"C1", kGateway},
        Row{u"h1.example", u"C11", u"C1", kGateway}, Row{u"abcd", u"C1", u"C1", "abcd:80 "},
        Row{u" h1.example ", u" C1 ", u"C1   ", " h1.example :80 "}}) {
    Keep(u"ServerURL", kept_server);
    Keep(u"ClientCRN", kept_crn);
    const bool validated = server == kGateway;
    internet_.Answer(validated ? "[Invalid]" : "001");
    const std::size_t before = Requests().size();
    Login({.crn = crn});
    ASSERT_EQ(Requests().size(), before + 1) << ToUtf8(kept_server);
    EXPECT_TRUE(Requests().back().starts_with(server + std::string(validated ? kValidate : kCheck)))
        << Requests().back();
    EXPECT_EQ(Kept(u"ServerURL"), kept_server);
  }
}

TEST_F(FrmLoginTest, TheServerIsTheValidationsAnswerWithoutItsMarker) {
  struct Row {
    std::string_view answer;
    TextView host;
  };
  for (const auto& [answer, host] :
       {Row{"[Success]h1.example", u"h1.example"}, Row{"h1.[Success]example[Success]", u"h1.example"},
        Row{"[Success] h1.example\n", u" h1.example\n"}, Row{"[Invalid][Success]", u"[Invalid]"}}) {
    internet_.Answer(answer);
    internet_.Answer("002");
    Login({});
    EXPECT_EQ(connect_.session().ServerHost, host);
  }
}

TEST_F(FrmLoginTest, ACrnThatIsNotValidatedEndsTheAttemptAndNotTheSession) {
  StartLoggedIn();
  struct Row {
    std::string_view answer;
    std::vector<Alert> alerts;
    std::size_t boxes;  // of the host
    std::string_view focus;
  };
  for (const auto& [answer, alerts, boxes, focus] :
       {Row{"sorry: [Invalid]", {{u"Invalid CRN Number.", kWarning, u"CRN Validation Failed"}}, 0, "txtCRN"},
        Row{"[success]",
            {{u"Unable to process. Please try again.", kWarning, u"CRN Validation"}},
            0,
            "cmdLogin"},
        Row{"", {}, 1, "cmdLogin"}}) {
    const std::size_t requests = Requests().size();
    internet_.Answer(answer);
    const After after = Login({.crn = u"C2"});
    EXPECT_EQ(NewAlerts(), alerts);
    EXPECT_EQ(forms_.questions().size(), boxes);
    EXPECT_EQ(after.focus, focus);
    EXPECT_TRUE(after.open);
    EXPECT_EQ(Requests().size(), requests + 1);
    EXPECT_EQ(forms_.pointers().back(), Pointer::kDefault);
    EXPECT_TRUE(connect_.session().LoggedIn);
    EXPECT_EQ(ToUtf8(connect_.session().ServerHost) + ":80 ", kGateway);
  }
  EXPECT_EQ(
      forms_.questions()[0],
      (ScriptedForms::Question{u"No Response. Please check your internet connection and proxy settings.",
                               kOkOnly | kInformation, u"Unable To Connect.", u""}));
}

TEST_F(FrmLoginTest, ARefusalIsExplainedAndLogsTheSessionOut) {
  struct Row {
    std::string_view reply;
    TextView message;
    std::string_view focus;
    std::string_view selected = {};
  };
  for (const auto& [reply, message, focus, selected] :
       {Row{"001", u"No Balance. Please buy SMS", "cmdLogin"},
        Row{"002", u"Invalid User Name", "txtUserName", "txtUserName"},
        Row{"003", u"Invalid Password", "txtPasswd", "txtPasswd"},
        Row{"004", u"Your account has been blocked", "cmdLogin"},
        Row{"<ERROR>", u"Error occured while Logging to your account", "cmdLogin"}}) {
    StartLoggedIn();
    internet_.Answer(reply);
    const After after = Login({});
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{Text(message), kWarning, u"S M S"}));
    EXPECT_TRUE(after.open);
    EXPECT_EQ(after.focus, focus) << reply;
    EXPECT_EQ(after.selected, selected) << reply;
    EXPECT_FALSE(connect_.session().LoggedIn) << reply;
    EXPECT_EQ(connect_.session().UserName + connect_.session().Password, u"") << reply;
    settings_.Write({u"Tessaly", u"AuthDetails", u"ServerURL"}, u"");
  }
}

TEST_F(FrmLoginTest, AnyOtherReplyCountsAsNoResponse) {
  StartLoggedIn();
  for (const std::string_view reply : {"", " 000", "000\r\n", "0110", "005", "<html>"}) {
    internet_.Answer(reply);
    forms_.AnswerNext(Answer::kNo);
    EXPECT_TRUE(Login({}).open);
    EXPECT_FALSE(connect_.session().LoggedIn);
  }
  EXPECT_THAT(NewAlerts(), IsEmpty());
  EXPECT_EQ(forms_.questions().size(), 6U);
  EXPECT_EQ(forms_.questions().back(),
            (ScriptedForms::Question{
                u"No Response!!!\r\nPlease Check Your Proxy Settings & Internet Connection!!!\r\n"
                u"Do You Want To Edit Proxy Settings?",
                kYesNo, u"S M S", u""}));
}

TEST_F(FrmLoginTest, AfterTheProxyIsEditedTheWholeAttemptIsMadeAgain) {
  internet_.Answer("[Success]h1.example");
  internet_.NoAnswer();
  internet_.Answer("[Success]h2.example");
  internet_.Answer("000");
  forms_.AnswerNext(Answer::kYes);
  forms_.On<frmProxySettings>([](frmProxySettings& form) {
    form.cboProxyType.UserSelect(1);
    form.cmdOk.UserPress();
  });
  EXPECT_FALSE(Login({}).open);
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{Text(kLoggedIn), kInformation, u"S M S"}));
  const std::string check(kCheck);
  const std::string validate = kGateway + std::string(kValidate) + " CRN=C1";
  EXPECT_THAT(Requests(), ElementsAre(validate, "h1.example:80 " + check + " user=joe&passwd=secret",
                                      validate, "h2.example:80 " + check + " user=joe&passwd=secret"));
  EXPECT_EQ(connect_.session().ProxyType, 1);
  EXPECT_TRUE(connect_.session().LoggedIn);
}

TEST_F(FrmLoginTest, SettingsThatCannotBeKeptAreReportedAndTheNextAttemptWorks) {
  internet_.Answer("[Success]h1.example");
  internet_.Answer("000");
  faults_.Fail("Settings::Write", 2, 1, RuntimeError(70, u"Permission denied"));
  EXPECT_TRUE(Login({}).open);
  EXPECT_THAT(NewAlerts(), ElementsAre(GeneralError(u"Permission denied")));
  EXPECT_FALSE(connect_.session().LoggedIn);
  EXPECT_EQ(forms_.pointers().back(), Pointer::kDefault);
  StartLoggedIn();
}

}  // namespace
}  // namespace quorvel
