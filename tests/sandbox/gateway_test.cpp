#include "sandbox/gateway.h"

#include "gateway_fixture.h"

namespace quorvel::sandbox {
namespace {

constexpr std::string_view kLogin = "/Tools/Excel_Plugin/LoginCheck.asp";

// A plain send of `message` to two numbers.
std::string TwoNumbers(const std::string& message, const std::string& cells, const std::string& rest = "") {
  return "mobilenumber=111,222&message=" + message + "&MMCellData=" + cells + kPlain +
         "&ver=1.0&SenderName=QUORVEL&IsConcatSMS=0" + rest;
}

TEST_F(GatewayTest, ValidatesCrns) {
  EXPECT_EQ(Post("/Tools/Excel_Plugin/ValidateCRN.asp", "CRN=1001"), "[Success]sms1.quorvel.example");
  EXPECT_EQ(Post("/Tools/Excel_Plugin/ValidateCRN.asp", "CRN=1002"), "[Invalid]");
  EXPECT_EQ(Post("/Tools/Excel_Plugin/ValidateCRN.asp", ""), "[Invalid]");
}

TEST_F(GatewayTest, LoginAnswersEachState) {
  EXPECT_EQ(Post(kLogin, "user=demo&passwd=demo"), "000");
  EXPECT_EQ(Post(kLogin, "user=Demo&passwd=demo"), "002");
  EXPECT_EQ(Post(kLogin, "user=demo&passwd=Demo"), "003");
  EXPECT_EQ(Post(kLogin, "user=demo&passwd=n%07nuv%02"), "003");  // scrambled, where plain is asked for
  EXPECT_EQ(Post(kLogin, "user=demo"), "<ERROR>");
  RestartWithCredit(0);
  EXPECT_EQ(Post(kLogin, "user=demo&passwd=demo"), "001");

  Data blocked = DefaultData();
  blocked.accounts.front().blocked = true;
  Restart(blocked);
  EXPECT_EQ(Post(kLogin, "user=demo&passwd=demo"), "004");
  EXPECT_EQ(Post(kLogin, "user=demo&passwd=x"), "003");
  EXPECT_EQ(Post("/Merrow/Get_Balance.asp", kScrambled), "0110");
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "0110");
}

TEST_F(GatewayTest, EachPageTakesItsFormOfThePassword) {
  EXPECT_EQ(Post("/Merrow/Get_Balance.asp", kScrambled), "<SMS>500</SMS>");
  EXPECT_EQ(Post("/Merrow/Get_Balance.asp", kPlain), "003");

  const std::string job =
      "mobilenumber=1&message=Hi&MMCellData=&SenderName=S&schedulerName=T&ScheduledAfterMinutes=5";
  const struct {
    std::string_view path;
    const char* plain;
    const char* scrambled;
  } pages[] = {
      {"/Tools/Excel_Plugin/SaveBulkSMS.aspx", "000", "003"},
      {"/Merrow/SaveSchedulerData_Excel_Dynamic.asp", "000", "003"},
      {"/Merrow_1/SaveSchedulerData_Excel.aspx", "000", "000"},
      {"/Merrow/SaveSchedulerData_Excel.asp", "003", "000"},
      {"/Merrow_1/SaveBulkSMS.aspx", "003", "000"},
      {"/Merrow/SaveExcelData_V2.asp", "003", "000"},
  };
  for (const auto& page : pages) {
    EXPECT_EQ(Post(page.path, job + kPlain), page.plain) << page.path;
    EXPECT_EQ(Post(page.path, job + kScrambled), page.scrambled) << page.path;
  }
  EXPECT_EQ(Messages().size(), 7U);
  EXPECT_EQ(Credit(), 493);
}

TEST_F(GatewayTest, ModesNeedNoAccountAndOnlyGet) {
  const std::string modes = Get("/Merrow/Get_Modes.asp");
  EXPECT_TRUE(modes.starts_with("<SMS>L-Spreadsheet AddIn,C-")) << modes;
  EXPECT_TRUE(modes.ends_with("</SMS>"));
  EXPECT_EQ(Handle("POST", "/Merrow/Get_Modes.asp", "").status, 405);
  EXPECT_EQ(Handle("POST", "/Merrow/get_modes", "").status, 404);
  EXPECT_EQ(Handle("GET", "http://any.host:88/Merrow/Get_Modes.asp", "").body, modes);
  EXPECT_EQ(Handle("GET", "http://any.host", "").status, 404);
}

TEST_F(GatewayTest, MergesEachRowForItsNumber) {
  EXPECT_EQ(Post(kBulk, TwoNumbers("Dear+%23B%23%2C+%3C%23+C+%23%3E",
                                   "B%01A%26b%02C%01%231\x7f"
                                   "B%01%E9%02C%01%80")),
            "000");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Dear A&b, <#1>", "Dear \u00e9, <\u20ac>"}));
  EXPECT_EQ(Messages()[1]["number"], "222");
}

TEST_F(GatewayTest, RestoresAngleBracketsOfTheTemplateOnly) {
  EXPECT_EQ(Post(kBulk, TwoNumbers("%7CSMSC%5FLT%7C%23B%23%7CSMSC%5FGT%7C",
                                   "B%01%7CSMSC%5FLT%7C\x7f"
                                   "B%01x")),
            "000");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"<|SMSC_LT|>", "<x>"}));
}

TEST_F(GatewayTest, MessageWithoutPlaceholdersNeedsNoCellData) {
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "000");
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "\x7f")), "000");
  EXPECT_EQ(Texts(), (std::vector<std::string>(4, "Hi")));
}

TEST_F(GatewayTest, DecodesUnicodeTemplateBeforeItsValues) {
  // "<#B#" of U+0627 and an emoji; a value that looks like a placeholder stays one.
  EXPECT_EQ(Post(kBulk,
                 "mobilenumber=1,2&message=003C002300420023&MMCellData=B%010627D83DDE00\x7f"
                 "B%01002300420023&user=demo&passwd=demo&ver=1.2&isUnicodeSubmit=1&TOS=44&SenderName=Q"
                 "&sendEmail=1&EmailSubject=0627&EmailAdresses=a%40b%2C+&FromEmailID=me%40x&FromEmailPwd=pw"),
            "000");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"<\u0627\U0001F600", "<#B#"}));
  const auto message = Messages()[0];
  EXPECT_EQ(message["tos"], "44");
  EXPECT_EQ(message["email"], (nlohmann::json{{"to", "a@b"}, {"subject", "\u0627"}, {"from", "me@x"}}));
}

TEST_F(GatewayTest, CountsCreditByMergedLength) {
  const std::string limit(158, 'x');
  // 160 and 161 characters once merged: 1 + 2 SMS.
  EXPECT_EQ(Post(kBulk, TwoNumbers(limit + "%23B%23",
                                   "B%01ab\x7f"
                                   "B%01abc")),
            "000");
  EXPECT_EQ(Credit(), 497);
  std::string unicode;
  for (int i = 0; i < 71; ++i) unicode += "0627";
  EXPECT_EQ(Post(kBulk, "mobilenumber=1&message=" + unicode +
                            "&MMCellData=&isUnicodeSubmit=1&TOS=44&SenderName=Q" + kPlain),
            "000");
  EXPECT_EQ(Credit(), 495);
}

TEST_F(GatewayTest, RefusesAJobThatCreditDoesNotCoverWhole) {
  RestartWithCredit(1);
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "001");
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(Credit(), 1);
  RestartWithCredit(2);
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "000");
  EXPECT_EQ(Credit(), 0);
}

TEST_F(GatewayTest, KeepsTheOptionsOfAJob) {
  ASSERT_EQ(Post(kBulk, TwoNumbers("Hi", "", "&TOS=31&WAP_URL=http%3A%2F%2Fx%2F%3Fa%3D1")), "000");
  ASSERT_EQ(Post(kBulk, "mobilenumber=+4411&message=Hi&MMCellData=&SenderName=My+Shop" + kPlain), "000");
  const auto messages = Messages();
  EXPECT_EQ(messages[0]["tos"], "31");
  EXPECT_EQ(messages[0]["wap_url"], "http://x/?a=1");
  EXPECT_EQ(messages[0]["due"], "2024-03-01T10:00:00");
  EXPECT_EQ(messages[0]["scheduled"], false);
  EXPECT_EQ(messages[2]["number"], "+4411");
  EXPECT_EQ(messages[2]["sender"], "My Shop");
  EXPECT_TRUE(messages[2]["tos"].is_null());
  EXPECT_TRUE(messages[2]["email"].is_null());
}

TEST_F(GatewayTest, RefusesMalformedJobsAndKeepsNothing) {
  const std::string good =
      "mobilenumber=1,2&message=%23B%23&MMCellData=B%01x\x7f"
      "B%01y&SenderName=Q";
  ASSERT_EQ(Post(kBulk, good + kPlain), "000");
  ASSERT_EQ(Post("/_sandbox/reset", ""), "reset\n");
  const std::string bad[] = {
      "message=Hi&MMCellData=&SenderName=Q",
      "mobilenumber=&message=Hi&MMCellData=&SenderName=Q",
      "mobilenumber=1,&message=Hi&MMCellData=&SenderName=Q",
      "mobilenumber=1&MMCellData=&SenderName=Q",
      "mobilenumber=1&message=Hi&SenderName=Q",
      "mobilenumber=1&message=Hi&MMCellData=",
      "mobilenumber=1,2&message=%23B%23&MMCellData=&SenderName=Q",
      "mobilenumber=1,2,3&message=Hi&MMCellData=\x7f&SenderName=Q",
      "mobilenumber=1,2&message=Hi&MMCellData=B%01x%7FB%01y&SenderName=Q",  // a separator that was encoded
      "mobilenumber=1&message=Hi&MMCellData=x&SenderName=Q",
      "mobilenumber=1&message=Hi&MMCellData=&SenderName=Q&isUnicodeSubmit=1",
      "mobilenumber=1&message=0041&MMCellData=B%01xyz&SenderName=Q&isUnicodeSubmit=1",
      good + "&TOS=12",
      good + "&TOS=31",
      good + "&sendEmail=1&EmailSubject=S&EmailAdresses=a%2Cb&FromEmailID=f",
      good + "&sendEmail=1&EmailSubject=S&EmailAdresses=a&FromEmailID=f&FromEmailPwd=p",
  };
  for (const std::string& body : bad) {
    log_.clear();
    EXPECT_EQ(Post(kBulk, body + kPlain), "<ERROR>") << body;
    EXPECT_EQ(log_.size(), 1U) << body;
  }
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(Credit(), 500);
}

TEST_F(GatewayTest, SchedulesForAllOrForEachNumber) {
  const std::string job =
      "mobilenumber=1,2&message=Hi&MMCellData=&SenderName=Q&schedulerName=My+job" + kPlain;
  EXPECT_EQ(Post(kScheduled, job + "&ScheduledAfterMinutes=90&NotifyMe=1"), "000");
  EXPECT_EQ(Post(kScheduled, job + "&ScheduledAfterMinutes=5,-3&NotifyMe=0"), "000");
  const auto messages = Messages();
  const char* due[] = {"2024-03-01T11:30:00", "2024-03-01T11:30:00", "2024-03-01T10:05:00",
                       "2024-03-01T10:00:00"};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(messages[i]["due"], due[i]);
  EXPECT_EQ(messages[0]["title"], "My job");
  EXPECT_EQ(messages[0]["scheduled"], true);
  EXPECT_EQ(messages[0]["notify"], true);
  EXPECT_EQ(messages[2]["notify"], false);

  for (const char* minutes :
       {"", "&ScheduledAfterMinutes=", "&ScheduledAfterMinutes=,5", "&ScheduledAfterMinutes=1,2,3",
        "&ScheduledAfterMinutes=5,", "&ScheduledAfterMinutes=soon"}) {
    EXPECT_EQ(Post(kScheduled, job + minutes), "<ERROR>") << minutes;
  }
}

TEST_F(GatewayTest, RecordsEveryRequestOnceAndCutsLongBodies) {
  const std::string body = TwoNumbers("Hi", "\x7f");
  ASSERT_EQ(Handle("POST", "http://sms1.quorvel.example" + std::string(kBulk), body).body, "000");
  Post("/nowhere", "\xE9");
  ASSERT_EQ(Post(kBulk, TwoNumbers("Hi", "", "&pad=" + std::string(70000, 'p'))), "000");
  const auto received = Received();
  ASSERT_EQ(received["requests"].size(), 3U);
  EXPECT_EQ(received["requests"][0],
            (nlohmann::json{{"method", "POST"},
                            {"target", "http://sms1.quorvel.example" + std::string(kBulk)},
                            {"host", "gateway"},
                            {"body", body}}));
  EXPECT_EQ(received["requests"][1]["body"], "\u00e9");
  EXPECT_EQ(received["requests"][2]["body"].get<std::string>().size(), 65536U);
  EXPECT_EQ(received["requests"][2]["truncated"], true);
  EXPECT_EQ(received["messages"][0]["request"], 0);
  EXPECT_EQ(received["messages"][3]["request"], 2);

  EXPECT_EQ(Post("/_sandbox/reset", ""), "reset\n");
  EXPECT_TRUE(Received()["requests"].empty());
  EXPECT_EQ(Credit(), 500);
}

TEST_F(GatewayTest, FaultsHitTheirOperationOnly) {
  ASSERT_EQ(Post("/_sandbox/fail", "001\r\nbalance=error\n\nlogin=empty"), "rules replaced\n");
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "001");
  EXPECT_EQ(Post("/Merrow/Get_Balance.asp", kScrambled), "<ERROR>");
  EXPECT_EQ(Post("/Tools/Excel_Plugin/LoginCheck.asp", kPlain), "");
  EXPECT_EQ(Post("/Tools/Excel_Plugin/ValidateCRN.asp", "CRN=1001"), "[Success]sms1.quorvel.example");
  EXPECT_TRUE(Messages().empty());

  EXPECT_EQ(Handle("POST", "/_sandbox/fail", "send=slow\nsend=nap").status, 400);
  EXPECT_EQ(Handle("POST", "/_sandbox/fail", "sand=slow").status, 400);
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "001");  // the old rules stand
  Post("/_sandbox/fail", "");
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "000");
}

TEST_F(GatewayTest, FaultsAfterHandlingKeepTheJob) {
  const struct {
    const char* rule;
    Delivery delivery;
    bool kept;
  } faults[] = {
      {"refuse", Delivery::kNothing, false}, {"cut-before", Delivery::kNothing, true},
      {"cut-inside", Delivery::kHalf, true}, {"cut-after", Delivery::kThenReset, true},
      {"slow", Delivery::kSlow, true},       {"empty", Delivery::kWhole, true},
      {"garbage", Delivery::kWhole, true},   {"megabyte", Delivery::kWhole, true},
      {"error", Delivery::kWhole, false},
  };
  for (const auto& fault : faults) {
    Post("/_sandbox/reset", "");
    Post("/_sandbox/fail", fault.rule);
    EXPECT_EQ(Handle("POST", kBulk, TwoNumbers("Hi", "")).delivery, fault.delivery) << fault.rule;
    EXPECT_EQ(Messages().size(), fault.kept ? 2U : 0U) << fault.rule;
    EXPECT_EQ(Received()["requests"].size(), 1U) << fault.rule;
  }
}

TEST_F(GatewayTest, GarbageIsTheSameEachTimeAndBinary) {
  Post("/_sandbox/fail", "balance=garbage\nmodes=megabyte");
  const std::string garbage = Post("/Merrow/Get_Balance.asp", kScrambled);
  EXPECT_EQ(garbage, Post("/Merrow/Get_Balance.asp", kScrambled));
  EXPECT_NE(garbage.find('\0'), std::string::npos);
  EXPECT_TRUE(std::ranges::any_of(garbage, [](char c) { return static_cast<unsigned char>(c) >= 0x80; }));
  EXPECT_EQ(Get("/Merrow/Get_Modes.asp").size(), 1024U * 1024U);
}

TEST_F(GatewayTest, SurvivesARestartWithWhatItSaved) {
  ASSERT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "000");
  ASSERT_TRUE(saved_);
  Restart(*saved_);
  EXPECT_EQ(Credit(), 498);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Hi", "Hi"}));
  ASSERT_EQ(Post(kBulk, TwoNumbers("Ho", "")), "000");
  EXPECT_NE(Messages()[0]["job"], Messages()[2]["job"]);
}

TEST_F(GatewayTest, TakesNothingThatItCannotSave) {
  disk_is_full_ = true;
  EXPECT_EQ(Post(kBulk, TwoNumbers("Hi", "")), "<ERROR>");
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(Credit(), 500);
  EXPECT_EQ(Handle("POST", "/_sandbox/reset", "").status, 500);
}

}  // namespace
}  // namespace quorvel::sandbox
