#include "sandbox/reports.h"

#include "gateway_fixture.h"

namespace quorvel::sandbox {
namespace {

constexpr const char* kHeader = "Number-Message-Sender-Submitted-Due-Status-Mode";

class ReportsTest : public GatewayTest {
 protected:
  std::string Ask(const std::string& from, const std::string& to, const std::string& mode) {
    return Post("/Merrow/Get_DR.asp", kScrambled + "&FromDate=" + from + "&ToDate=" + to + "&TOD=" + mode);
  }
  std::string Today() { return Ask("20240301", "20240301", "L"); }

  // The reply that holds these records behind the header.
  static std::string Reply(const std::string& records) {
    return std::string("<SMS>") + kHeader + records + "</SMS>";
  }
};

TEST_F(ReportsTest, StatesFollowTheClock) {
  ASSERT_EQ(Post(kScheduled,
                 "mobilenumber=11,20&message=Hi&MMCellData=&SenderName=Q&schedulerName=T"
                 "&ScheduledAfterMinutes=1,2" +
                     kPlain),
            "000");
  const auto expect = [this](const std::string& first, const std::string& second) {
    EXPECT_EQ(Today(),
              Reply(",11-Hi-Q-2024~03~01 10:00:00-2024~03~01 10:01:00-" + first + "-Spreadsheet AddIn" +
                    ",20-Hi-Q-2024~03~01 10:00:00-2024~03~01 10:02:00-" + second + "-Spreadsheet AddIn"));
  };
  expect("SCHEDULED", "SCHEDULED");
  now_ += std::chrono::seconds(60);
  expect("SUBMITTED", "SCHEDULED");
  now_ += std::chrono::seconds(30);
  expect("DELIVERED", "SCHEDULED");
  now_ += std::chrono::seconds(60);
  expect("DELIVERED", "FAILED");
}

TEST_F(ReportsTest, EscapesTheFieldsOfARecord) {
  ASSERT_EQ(Post(kBulk, "mobilenumber=11&message=a%2Cb%2Dc%80&MMCellData=&SenderName=My%2DShop" + kPlain),
            "000");
  EXPECT_EQ(Today(), Reply(",11-a\x80"
                           "b~c?-My~Shop-2024~03~01 10:00:00-2024~03~01 10:00:00-SUBMITTED-"
                           "Spreadsheet AddIn"));
}

TEST_F(ReportsTest, FiltersByDayOfSubmissionAndMode) {
  ASSERT_EQ(Post(kBulk, "mobilenumber=11&message=Hi&MMCellData=&SenderName=Q" + kPlain), "000");
  const auto count = [](const std::string& reply) { return std::ranges::count(reply, ','); };
  EXPECT_EQ(count(Ask("20240115", "20240301", "ALL")), 3);
  EXPECT_EQ(count(Ask("20240115", "20240115", "ALL")), 2);
  EXPECT_EQ(count(Ask("20240115", "20240301", "C")), 1);
  EXPECT_EQ(count(Ask("20240301", "20240301", "L")), 1);
  EXPECT_EQ(Ask("20240302", "20240401", "ALL"), "<SMS>0</SMS>");
  EXPECT_EQ(Ask("20240115", "20240301", "H"), "<SMS>0</SMS>");
}

TEST_F(ReportsTest, RefusesBadParameters) {
  for (const auto& [from, to, mode] : {std::tuple{"20240230", "20240301", "L"},
                                       {"2024031", "20240301", "L"},
                                       {"20240301", "", "L"},
                                       {"20240302", "20240301", "L"},
                                       {"20240301", "20240301", "Z"},
                                       {"20240301", "20240301", "l"},
                                       {"20240301", "20240301", ""},
                                       {"20240301", "20240301", "LC"}}) {
    EXPECT_EQ(Ask(from, to, mode), "005") << from << " " << to << " " << mode;
  }
}

TEST_F(ReportsTest, AnAccountSeesItsOwnJobsOnly) {
  Data data = DefaultData();
  data.accounts.push_back(data.accounts.front());
  data.accounts.back().user = u"other";
  data.accounts.back().reports.clear();
  Restart(std::move(data));
  ASSERT_EQ(Post(kBulk, "mobilenumber=11&message=Hi&MMCellData=&SenderName=Q&user=other&passwd=demo"), "000");
  EXPECT_EQ(Today(), "<SMS>0</SMS>");
}

}  // namespace
}  // namespace quorvel::sandbox
