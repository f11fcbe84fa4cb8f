#include <csignal>

#include "console_test.h"
#include "loopback_server.h"

namespace quorvel {
namespace {

constexpr const char* kCustomers =
    "Name,City,Mobile,Mail\n"
    "Anna,Rome,919800000101,anna@x.example\n"
    "\"Bo, Jr\",Oslo,98 0000-0102,bo@x.example\n"
    "Cy,Bonn,,cy@x.example\n"
    "Di,Riga,919800000101,di@x.example\n";

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// What arrived, as "number: text".
std::vector<std::string> Arrived(const nlohmann::json& received) {
  std::vector<std::string> messages;
  for (const auto& message : received["messages"]) {
    messages.push_back(message["number"].get<std::string>() + ": " + message["text"].get<std::string>());
  }
  return messages;
}

using ConsoleSend = SandboxTest;

TEST_F(ConsoleSend, EveryRowGetsItsOwnMessage) {
  const std::string workbook = File("customers.csv", kCustomers);
  const RunResult run = Quorvel({"send", workbook, "--to", "c", "--message", "Hello #A# in #B#, #AB#"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "accepted\n");
  EXPECT_EQ(run.error, "S M S: Logged in successfully\n S M S : 3 SMS Messages Sent\n");
  EXPECT_EQ(Arrived(Received()), (std::vector<std::string>{"919800000101: Hello Anna in Rome, #AB#",
                                                           "9800000102: Hello Bo, Jr in Oslo, #AB#",
                                                           "919800000101: Hello Di in Riga, #AB#"}));
}

TEST_F(ConsoleSend, RowsDuplicatesFilterAndCountryCodeChooseTheRecipients) {
  const std::string workbook = File("customers.csv", kCustomers);
  const auto send = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {"send", workbook, "--to", "C", "--message", "#B#", "--yes"});
    const std::size_t before = Arrived(Received()).size();
    const RunResult run = Quorvel(options);
    EXPECT_EQ(run.status, 0) << run.error;
    std::vector<std::string> arrived = Arrived(Received());
    arrived.erase(arrived.begin(), arrived.begin() + static_cast<std::ptrdiff_t>(before));
    return arrived;
  };
  using Messages = std::vector<std::string>;
  EXPECT_EQ(send({"--rows", "5, 2-3"}),
            (Messages{"919800000101: Riga", "919800000101: Rome", "9800000102: Oslo"}));
  EXPECT_EQ(send({"--start", "3", "--end", "4"}), (Messages{"9800000102: Oslo"}));
  EXPECT_EQ(send({"--ignore-duplicates"}), (Messages{"919800000101: Rome", "9800000102: Oslo"}));
  EXPECT_EQ(send({}).size(), 3U);  // an option holds for its own run only
  EXPECT_EQ(send({"--filter", "#B# like 'R%'"}), (Messages{"919800000101: Rome", "919800000101: Riga"}));
  EXPECT_EQ(send({"--rows", "3", "--country-code", "91", "--national-length", "12"}),
            (Messages{"919800000102: Oslo"}));
  EXPECT_EQ(send({"--grouped", "--header", "Cities:", "--footer", "Bye"}),
            (Messages{"919800000101: Cities:\r\nRome\r\nRiga\r\nBye", "9800000102: Cities:\r\nOslo\r\nBye"}));
}

TEST_F(ConsoleSend, UnicodeAndAMessageFileArriveAsWritten) {
  const std::string workbook =
      File("customers.csv", "919800000101,\xC5\xBB\xC3\xB3\xC5\x82w,\xF0\x9F\x98\x80\n");
  const std::string message = File("message.txt", "\xEF\xBB\xBF\xD0\x96 #B# #C#\n");
  const RunResult run = Quorvel({"send", workbook, "--to", "A", "--message-file", message});
  EXPECT_EQ(run.status, 0) << run.error;
  EXPECT_EQ(
      Arrived(Received()),
      (std::vector<std::string>{"919800000101: \xD0\x96 \xC5\xBB\xC3\xB3\xC5\x82w \xF0\x9F\x98\x80\n"}));
}

TEST_F(ConsoleSend, AScheduledJobCarriesItsOptions) {
  const std::string workbook = File("customers.csv", kCustomers);
  environment_["QUORVEL_EMAIL_PASSWORD"] = "mail-secret";
  const std::vector<std::string> arguments = {"send",
                                              workbook,
                                              "--to",
                                              "C",
                                              "--rows",
                                              "2",
                                              "--message",
                                              "Sale",
                                              "--sender",
                                              "SHOPIN",
                                              "--flash",
                                              "--schedule",
                                              "2099-02-03 14:30",
                                              "--title",
                                              "Spring",
                                              "--notify",
                                              "--email-column",
                                              "d",
                                              "--email-subject",
                                              "Our sale",
                                              "--from-email",
                                              "me@x.example"};
  EXPECT_EQ(Quorvel(arguments).status, 3);  // the question has nobody to answer it
  EXPECT_TRUE(Received()["messages"].empty());

  std::vector<std::string> going_on = arguments;
  going_on.emplace_back("--yes");
  const RunResult run = Quorvel(going_on);
  EXPECT_EQ(run.status, 0) << run.error;
  EXPECT_TRUE(
      Holds(run.error, "SMS: Are You Sure You Want To Set Scheculer On 'Tuesday 03 February 2099 02:30 PM'"));
  const nlohmann::json received = Received();
  ASSERT_EQ(received["messages"].size(), 1U);
  const nlohmann::json& message = received["messages"][0];
  EXPECT_TRUE(message["due"].get<std::string>().starts_with("2099-02-03T14:")) << message["due"];
  EXPECT_EQ(message["sender"], "SHOPIN");
  EXPECT_EQ(message["tos"], "46");
  EXPECT_EQ(message["title"], "Spring");
  EXPECT_EQ(message["notify"], true);
  EXPECT_EQ(message["email"],
            (nlohmann::json{{"to", "anna@x.example"}, {"subject", "Our sale"}, {"from", "me@x.example"}}));
  EXPECT_TRUE(Holds(received["requests"].back()["body"], "&FromEmailPwd=mail%2Dsecret"));
}

TEST_F(ConsoleSend, ThePreviewShowsEveryMessageAndWaitsForAnAnswer) {
  const std::string workbook = File("customers.csv", kCustomers);
  const std::vector<std::string> arguments = {"send", workbook,    "--to",   "C",        "--rows",
                                              "2,3",  "--message", "Hi #A#", "--preview"};
  const RunResult unanswered = Quorvel(arguments);
  EXPECT_EQ(unanswered.status, 3);
  EXPECT_TRUE(
      unanswered.output.starts_with("1/2  919800000101  characters: 7  SMS: \nHi Anna\n\n"
                                    "2/2  9800000102  characters: 9  SMS: \nHi Bo, Jr\n\n"
                                    "Total number of SMS charged: 2\n"))
      << unanswered.output;
  EXPECT_TRUE(Received()["messages"].empty());

  std::vector<std::string> going_on = arguments;
  going_on.insert(going_on.begin(), {"--yes", "--json"});
  const nlohmann::json result = nlohmann::json::parse(Quorvel(going_on).output);
  EXPECT_EQ(
      result["result"]["preview"]["messages"][1],
      (nlohmann::json{{"number", "9800000102"}, {"text", "Hi Bo, Jr"}, {"characters", "9"}, {"sms", ""}}));
  EXPECT_EQ(Received()["messages"].size(), 2U);
}

TEST_F(ConsoleSend, ALongMessageNeedsConsent) {
  const std::string workbook = File("customers.csv", "919800000101\n");
  const std::vector<std::string> arguments = {"send", workbook,    "--to",
                                              "A",    "--message", std::string(161, 'x')};
  const RunResult refused = Quorvel(arguments);
  EXPECT_EQ(refused.status, 3);
  EXPECT_EQ(refused.output, "cancelled\n");
  EXPECT_TRUE(Received()["messages"].empty());
  std::vector<std::string> going_on = arguments;
  going_on.emplace_back("-y");
  EXPECT_EQ(Quorvel(going_on).status, 0);
  EXPECT_EQ(Received()["messages"].size(), 1U);
}

TEST_F(ConsoleSend, JsonIsOneObjectAndNothingElse) {
  const std::string workbook = File("customers.csv", kCustomers);
  const RunResult run = Quorvel({"--json", "send", workbook, "--to", "C", "--message", "x"});
  EXPECT_EQ(run.error, "");
  EXPECT_EQ(nlohmann::json::parse(run.output),
            nlohmann::json::parse(R"({"messages": [{"title": "S M S", "text": "Logged in successfully"},
                                                   {"title": " S M S ", "text": "3 SMS Messages Sent"}],
                                      "result": {"outcome": "accepted"}, "status": 0})"));
  const RunResult bad = Quorvel({"send", Path("none.csv"), "--to", "C", "--message", "x", "--json"});
  EXPECT_EQ(bad.status, 4);
  EXPECT_EQ(nlohmann::json::parse(bad.output)["status"], 4);
}

struct Refusal {
  const char* name;
  const char* reply;
  int status;
  const char* outcome;
  const char* message;
};

void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << refusal.name;
}

class ConsoleRefusal : public SandboxTest, public testing::WithParamInterface<Refusal> {};

TEST_P(ConsoleRefusal, EndsTheSendWithItsMessageAndIsNotTriedAgain) {
  const std::string workbook = File("customers.csv", kCustomers);
  Fail(GetParam().reply);
  const std::size_t before = Received()["requests"].size();
  const RunResult run = Quorvel({"send", workbook, "--to", "C", "--message", "x"});
  EXPECT_EQ(run.status, GetParam().status);
  EXPECT_EQ(run.output, std::string(GetParam().outcome) + "\n");
  EXPECT_TRUE(Holds(run.error, GetParam().message)) << run.error;
  EXPECT_EQ(Received()["requests"].size(), before + 2);  // the login and the send
}

constexpr const char* kFailure =
    "Request/Response Failure!!!\nThis has happened due to any of the following reasons...\n"
    "1) No Internet Connection \n2) Invalid Proxy Settings\n3) Connection lost, \n"
    "    In this case, It may also be possible that your messages has been sent,\n"
    "    So please check delivery reports before sending again.\n";

INSTANTIATE_TEST_SUITE_P(
    All, ConsoleRefusal,
    testing::Values(Refusal{"NoCredit", "001", 1, "refused", " S M S : No Balance. Please buy SMS\n"},
                    Refusal{"User", "002", 1, "refused", " S M S : Invalid User Name\n"},
                    Refusal{"Password", "003", 1, "refused", " S M S : Invalid Password\n"},
                    Refusal{"Blocked", "0110", 1, "refused", " S M S : Your account has been blocked\n"},
                    Refusal{"Error", "error", 1, "refused",
                            " S M S : Error occured while sending SMS messages\n"},
                    Refusal{"Empty", "empty", 1, "unknown", kFailure},
                    Refusal{"CutBefore", "cut-before", 1, "unknown", kFailure},
                    Refusal{"Garbage", "garbage", 1, "unknown", kFailure}),
    [](const auto& instance) { return std::string(instance.param.name); });

// A gateway that records what comes in, reached as a proxy.
class ConsoleWire : public ConsoleTest {
 protected:
  static constexpr std::size_t kLoginRequests = 2;

  // Validates the CRN and logs in, then answers `reply`.
  explicit ConsoleWire(std::string reply = HttpAnswer("000"))
      : gateway_({HttpAnswer("[Success]sms.example"), HttpAnswer("000"), std::move(reply)}) {}

  void SetUp() override { UseProxy(gateway_.port()); }

  LoopbackServer gateway_;
};

TEST_F(ConsoleWire, ADryRunPrintsWhatWouldBePosted) {
  const std::string workbook = File("customers.csv", kCustomers);
  environment_["QUORVEL_EMAIL_PASSWORD"] = "mail&secret";
  const std::vector<std::string> arguments = {"send",
                                              workbook,
                                              "--to",
                                              "C",
                                              "--crn",
                                              "1001",
                                              "--user",
                                              "demo",
                                              "--message",
                                              "Hi #A#: #B# & #D#",
                                              "--email-column",
                                              "D",
                                              "--email-subject",
                                              "S",
                                              "--from-email",
                                              "me@x.example",
                                              "--english"};
  std::vector<std::string> dry = arguments;
  dry.emplace_back("--dry-run");
  environment_.erase("QUORVEL_PASSWORD");
  const RunResult shown = Quorvel(dry);
  EXPECT_EQ(shown.status, 0);
  EXPECT_EQ(shown.error, "");
  EXPECT_TRUE(gateway_.requests().empty());

  environment_["QUORVEL_PASSWORD"] = "demo";
  ASSERT_EQ(Quorvel(arguments).status, 0);
  ASSERT_EQ(gateway_.requests().size(), kLoginRequests + 1);
  const std::string request = gateway_.requests().back();
  std::string body = BodyOf(request);
  for (const std::string secret : {"&passwd=demo", "&FromEmailPwd=mail%26secret"}) {
    const std::size_t at = body.find(secret);
    ASSERT_NE(at, std::string::npos) << request;
    body.replace(at, secret.size(), secret.substr(0, secret.find('=') + 1) + "********");
  }
  EXPECT_EQ(shown.output, "Tools/Excel_Plugin/SaveBulkSMS.aspx\n" + body + "\n");
  EXPECT_TRUE(Holds(request.substr(0, request.find('\n')), "/Tools/Excel_Plugin/SaveBulkSMS.aspx HTTP/1.1"));
}

TEST_F(ConsoleWire, ALoginThatGetsNoAnswerIsNotRepeated) {
  LoopbackServer silent({HttpAnswer("[Success]sms.example"), ""});
  UseProxy(silent.port());
  const std::string workbook = File("customers.csv", kCustomers);
  const RunResult run =
      Quorvel({"--yes", "--crn", "1", "--user", "u", "send", workbook, "--to", "C", "--message", "x"});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Holds(run.error,
                    "S M S: No Response!!!\nPlease Check Your Proxy Settings & Internet Connection!!!\n"
                    "Do You Want To Edit Proxy Settings?\n"))
      << run.error;
  EXPECT_EQ(silent.requests().size(), 2U);
}

TEST_F(ConsoleWire, WithoutAPasswordAndATerminalNothingIsSent) {
  environment_.erase("QUORVEL_PASSWORD");
  const std::string workbook = File("customers.csv", kCustomers);
  const RunResult run =
      Quorvel({"--crn", "1", "--user", "u", "send", workbook, "--to", "C", "--message", "x"});
  EXPECT_EQ(run.status, 3);
  EXPECT_TRUE(Holds(run.error, "QUORVEL_PASSWORD")) << run.error;
  EXPECT_TRUE(gateway_.requests().empty());
}

TEST_F(ConsoleWire, OnATerminalThePasswordAndTheQuestionsAreAskedFor) {
  environment_.erase("QUORVEL_PASSWORD");
  const std::string workbook = File("customers.csv", "919800000101\n");
  ChildProcess::Start start =
      Start({"--crn", "1", "--user", "u", "send", workbook, "--to", "A", "--message", std::string(161, 'x')});
  start.on_terminal = true;
  ChildProcess program(start);
  ASSERT_TRUE(program.WaitForOutput("Password of u: "));
  program.Type("s3cret\n");
  ASSERT_TRUE(program.WaitForOutput("[y/N] "));
  program.Type("y\n");
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_TRUE(Holds(program.output(), "\r\x1B[KPlease wait")) << program.output();
  EXPECT_FALSE(Holds(program.output(), "s3cret")) << program.output();
  ASSERT_EQ(gateway_.requests().size(), kLoginRequests + 1);
  EXPECT_TRUE(Holds(gateway_.requests()[1], "user=u&passwd=s3cret"));
  EXPECT_TRUE(Holds(gateway_.requests()[2], "&IsConcatSMS=1"));
}

class ConsoleSilence : public ConsoleWire {
 protected:
  ConsoleSilence() : ConsoleWire(LoopbackServer::kSilence) {}
};

TEST_F(ConsoleSilence, ASendUnderWayTakesTwoInterruptsAndItsOutcomeIsUnknown) {
  const std::string workbook = File("customers.csv", kCustomers);
  ChildProcess program(Start({"--crn", "1", "--user", "u", "send", workbook, "--to", "C", "--message", "x"}));
  gateway_.WaitForRequests(kLoginRequests + 1);
  program.Signal(SIGINT);
  ASSERT_TRUE(program.WaitForError("on their way"));
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_EQ(program.output(), "unknown\n");
  EXPECT_TRUE(Holds(program.error(), kFailure)) << program.error();
  EXPECT_EQ(gateway_.requests().size(), kLoginRequests + 1);
}

TEST_F(ConsoleSilence, AnInterruptEndsAQueryAtOnce) {
  ChildProcess program(Start({"--crn", "1", "--user", "u", "balance"}));
  gateway_.WaitForRequests(kLoginRequests + 1);
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait(), 3);
}

}  // namespace
}  // namespace quorvel
