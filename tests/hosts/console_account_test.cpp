#include <sys/stat.h>

#include "console_test.h"

namespace quorvel {
namespace {

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

using ConsoleAccount = SandboxTest;

TEST_F(ConsoleAccount, BalanceIsPrintedAloneOnStandardOutput) {
  const RunResult run = Quorvel({"balance"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "500\n");
  EXPECT_TRUE(Holds(run.error, " S M S : Your credit balance is 500\n"));
  Fail("balance=empty");
  const RunResult failed = Quorvel({"balance"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.output, "");
}

TEST_F(ConsoleAccount, AWrongPasswordIsRefused) {
  environment_["QUORVEL_PASSWORD"] = "wrong";
  const RunResult run = Quorvel({"balance"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.error, "S M S: Invalid Password\n");
}

TEST_F(ConsoleAccount, TemplatesAreSavedListedSentAndDeleted) {
  EXPECT_EQ(Quorvel({"templates", "save", "Sale", "--message", "Sale in #B#"}).status, 0);
  EXPECT_EQ(Quorvel({"templates", "save", "Sale", "--message", "again"}).status, 1);
  const RunResult list = Quorvel({"templates", "list"});
  EXPECT_EQ(list.status, 0);
  EXPECT_TRUE(Holds(list.output, "Sale: Sale in #B#\n")) << list.output;

  const std::string workbook = File("w.csv", "919800000101,Rome\n");
  EXPECT_EQ(Quorvel({"send", workbook, "--to", "A", "--message", "@Sale"}).status, 0);
  EXPECT_EQ(Received()["messages"][0]["text"], "Sale in Rome");
  const RunResult unknown = Quorvel({"send", workbook, "--to", "A", "--message", "@Nothing"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_TRUE(Holds(unknown.error, "--message: \"Nothing\" is none of Greeting,")) << unknown.error;

  EXPECT_EQ(Quorvel({"templates", "delete", "Sale"}).status, 3);
  EXPECT_EQ(Quorvel({"templates", "delete", "Sale", "--yes"}).status, 0);
  EXPECT_FALSE(Holds(Quorvel({"templates", "list"}).output, "Sale"));

  Fail("templates=empty");
  const RunResult failed = Quorvel({"templates", "list"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_TRUE(Holds(failed.error, "the gateway did not answer")) << failed.error;
}

TEST_F(ConsoleAccount, SendersAreListed) {
  const RunResult run = Quorvel({"senders", "--json"});
  EXPECT_EQ(nlohmann::json::parse(run.output)["result"]["senders"], (nlohmann::json{"QUORVEL", "SHOPIN"}));
}

TEST_F(ConsoleAccount, ReportsGoToTheScreenOrAFile) {
  const std::string workbook = File("w.csv", "x\n");
  const std::vector<std::string> arguments = {"reports",    workbook,  "--from", "2024-01-01", "--to",
                                              "2024-12-31", "--sheet", "DR",     "--mode"};
  const auto with = [&](const std::vector<std::string>& more) {
    std::vector<std::string> all = arguments;
    all.insert(all.end(), more.begin(), more.end());
    return Quorvel(all);
  };
  const RunResult all = with({"all"});
  EXPECT_EQ(all.status, 0);
  EXPECT_EQ(all.output.substr(0, all.output.find("\r\n")), "Number,Message,Sender,Submitted,Due,Status,Mode");
  EXPECT_TRUE(Holds(all.output, "919800000020,\"Stock is low, please call\",SHOPIN,"));
  EXPECT_EQ(with({"ALL", "--output", Path("out.csv")}).output, "");
  EXPECT_EQ(ReadFile("out.csv"), all.output);
  EXPECT_EQ(ReadFile("w.csv"), "x\n");
  const RunResult one = with({"c"});
  EXPECT_TRUE(Holds(one.output, "919800000001") && !Holds(one.output, "919800000020")) << one.output;
  EXPECT_EQ(with({"L"}).status, 0);  // no records are no failure

  const RunResult letter = with({"X"});
  EXPECT_EQ(letter.status, 2);
  EXPECT_TRUE(Holds(letter.error, "--mode: \"X\" is none of L, C,")) << letter.error;
  EXPECT_EQ(with({"ALL", "--output", Path("no/such/folder.csv")}).status, 1);
}

TEST_F(ConsoleAccount, SettingsAreListedWithPasswordsMasked) {
  environment_["QUORVEL_PROXY_PASSWORD"] = "proxy-secret";
  ASSERT_EQ(Quorvel({"proxy", "--type", "named", "--host", "p", "--port", "1", "--user", "me"}).status, 0);
  const RunResult run = Quorvel({"settings"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(Holds(run.output, "Tessaly/AuthDetails/ClientCRN = 1001\n")) << run.output;
  EXPECT_TRUE(Holds(run.output, "Tessaly/ProxySettings/ProxyUserPWD = ********\n"));
  EXPECT_FALSE(Holds(run.output, "proxy-secret"));
  const auto json = nlohmann::json::parse(Quorvel({"--json", "settings"}).output);
  EXPECT_EQ(json["result"]["Tessaly"]["ProxySettings"]["ProxyUserPWD"], "********");
  EXPECT_FALSE(Holds(ReadFile("settings.db"), "demo\x01"));
  struct stat status {};
  ASSERT_EQ(::stat(Path("settings.db").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
}

using ConsoleOffline = ConsoleTest;

TEST_F(ConsoleOffline, TheMenuIsShownAsTheHostWouldShowIt) {
  const RunResult run = Quorvel({"menu"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(
      run.output,
      "Toolbar SMS\n  Send SMS\n  Proxy Settings\n  Help\n"
      "Menu\n  SMS\n    Login\n    ----\n    Send SMS\n    Proxy Settings\n    ----\n    Help\n    ----\n"
      "    Logout\n");
}

TEST_F(ConsoleOffline, AProxyThatTheFormRefusesChangesNothing) {
  ASSERT_EQ(Quorvel({"proxy", "--type", "named", "--host", "p", "--port", "8080x"}).status, 0);
  for (const auto& [port, message] :
       {std::pair("none", "S M S: Invalid Proxy Port\n"), {"40000", "Overflow\n"}}) {
    const RunResult run = Quorvel({"proxy", "--type", "named", "--host", "other", "--port", port});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.error, message)) << run.error;
    EXPECT_EQ(run.output, "type: named\nhost: p\nport: 8080\n");
  }
  EXPECT_EQ(Quorvel({"proxy", "--type", "direct"}).output, "type: direct\n");
}

TEST_F(ConsoleOffline, UsageErrorsNameTheOption) {
  const std::string workbook = File("w.csv", "a,b\nc,d\n");
  const std::string latin1 = File("latin1.txt", "caf\xE9\n");
  struct Case {
    std::vector<std::string> arguments;
    std::string part;
  };
  for (const Case& usage :
       {Case{{}, "subcommand"}, Case{{"sned"}, "sned"}, Case{{"send", workbook, "--message", "x"}, "--to"},
        Case{{"send", workbook, "--to", "A"}, "--message"},
        Case{{"send", workbook, "--to", "A", "--message", "x", "--rows", "1", "--start", "1"}, "--start"},
        Case{{"send", workbook, "--to", "A", "--message", "x", "--english", "--flash"}, "--flash"},
        Case{{"send", workbook, "--to", "A", "--message", "x", "--colour"}, "--colour"},
        Case{{"send", workbook, "--to", "Q", "--message", "x"}, "--to: \"Q\" is none of A, B"},
        Case{{"send", workbook, "--to", "A", "--message", "x", "--schedule", "tomorrow"}, "--schedule"},
        Case{{"send", workbook, "--to", "A", "--message", "@T", "--dry-run"}, "--dry-run"},
        Case{{"send", workbook, "--to", "A", "--message-file", latin1}, "latin1.txt:1: not valid UTF-8"},
        Case{{"send", workbook, "--to", "A", "--message-file", Path("none")}, "No such file"},
        Case{{"proxy", "--type", "magic"}, "--type"},
        Case{{"reports", workbook, "--from", "2024-02-30", "--to", "2024-03-01", "--mode", "L", "--sheet",
              "S"},
             "--from"}}) {
    const RunResult run = Quorvel(usage.arguments);
    EXPECT_EQ(run.status, 2) << usage.part;
    EXPECT_TRUE(Holds(run.error, usage.part)) << run.error;
    EXPECT_EQ(run.output, "");
  }
}

TEST_F(ConsoleOffline, AWorkbookThatCannotBeReadIsNamedWithItsLine) {
  const std::string broken = File("broken.csv", "a,b\nc,\"d\n");
  const RunResult run = Quorvel({"send", broken, "--to", "A", "--message", "x"});
  EXPECT_EQ(run.status, 4);
  EXPECT_EQ(run.error, "quorvel: " + broken + ":2: a quoted field that begins here is not closed\n");
  EXPECT_EQ(Quorvel({"reports", Path("none.csv"), "--from", "2024-01-01", "--to", "2024-01-01", "--mode", "L",
                     "--sheet", "S"})
                .status,
            4);
}

TEST_F(ConsoleOffline, SettingsThatCannotBeKeptEndWithTheReason) {
  File("folder", "a file where a folder is needed");
  ChildProcess program({.program = QUORVEL_PROGRAM,
                        .arguments = {"--settings", Path("folder/s.db"), "proxy", "--type", "direct"},
                        .environment = environment_});
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_TRUE(Holds(program.error(), Path("folder/s.db"))) << program.error();
}

}  // namespace
}  // namespace quorvel
