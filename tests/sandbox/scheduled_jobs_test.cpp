#include "sandbox/scheduled_jobs.h"

#include "gateway_fixture.h"

namespace quorvel::sandbox {
namespace {

class ScheduledJobsTest : public GatewayTest {
 protected:
  void Schedule(const std::string& title, const std::string& minutes) {
    ASSERT_EQ(Post(kScheduled, "mobilenumber=11,22&message=Hi&MMCellData=&SenderName=Q&schedulerName=" +
                                   title + "&ScheduledAfterMinutes=" + minutes + kPlain),
              "000");
  }
  std::string List() {
    return Post("/Merrow/getScheduledData_Excel.asp", "getScheduledSMS=Y" + kScrambled + "&ver=1.0");
  }
  std::string Edit(const std::string& what) {
    return Post("/Merrow/EditDeleteScheduler.asp", what + kScrambled + "&ver=1.0");
  }
};

TEST_F(ScheduledJobsTest, ListsWhatIsNotDueYet) {
  EXPECT_EQ(List(), "<SMS>0</SMS>");
  Schedule("First%2C+a%2Db", "10,20");
  Schedule("Second", "60");
  EXPECT_EQ(List(), "<SMS>1-First\x80 a~b-2024~03~01 10:10:00-2,2-Second-2024~03~01 11:00:00-2</SMS>");
  now_ += std::chrono::minutes(10);
  EXPECT_EQ(List(), "<SMS>1-First\x80 a~b-2024~03~01 10:20:00-1,2-Second-2024~03~01 11:00:00-2</SMS>");
  now_ += std::chrono::minutes(50);
  EXPECT_EQ(List(), "<SMS>0</SMS>");
}

TEST_F(ScheduledJobsTest, DeletesAndGivesCreditBackForWhatWasNotSent) {
  Schedule("First", "10,20");
  Schedule("Second", "60");
  ASSERT_EQ(Credit(), 496);
  now_ += std::chrono::minutes(10);
  EXPECT_EQ(Edit("schIDs=1,2"), "000");
  EXPECT_EQ(List(), "<SMS>0</SMS>");
  EXPECT_EQ(Credit(), 499);
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0]["number"], "11");
}

TEST_F(ScheduledJobsTest, RetimesWhatIsNotDueYet) {
  Schedule("First", "10,20");
  now_ += std::chrono::minutes(10);
  EXPECT_EQ(Edit("schIDs=1&newDateTimeMin=120"), "000");
  EXPECT_EQ(Messages()[0]["due"], "2024-03-01T10:10:00");
  EXPECT_EQ(Messages()[1]["due"], "2024-03-01T12:10:00");
}

TEST_F(ScheduledJobsTest, AnAccountReachesItsOwnJobsOnly) {
  Data data = DefaultData();
  data.accounts.push_back(data.accounts.front());
  data.accounts.back().user = u"other";
  Restart(std::move(data));
  Schedule("First", "10");
  const std::string other = "&user=other&passwd=n%07nuv%02";
  EXPECT_EQ(Post("/Merrow/getScheduledData_Excel.asp", "getScheduledSMS=Y" + other), "<SMS>0</SMS>");
  EXPECT_EQ(Post("/Merrow/EditDeleteScheduler.asp", "schIDs=1" + other), "<ERROR>");
  EXPECT_EQ(Messages().size(), 2U);
}

TEST_F(ScheduledJobsTest, ABadEditChangesNothing) {
  Schedule("First", "10");
  for (const char* what : {"schIDs=1,7", "schIDs=", "schIDs=x", "schIDs=1,", "", "schIDs=1&newDateTimeMin=",
                           "schIDs=1&newDateTimeMin=-1", "schIDs=1&newDateTimeMin=soon"}) {
    EXPECT_EQ(Edit(what), "<ERROR>") << what;
  }
  disk_is_full_ = true;
  EXPECT_EQ(Edit("schIDs=1"), "<ERROR>");
  EXPECT_EQ(List(), "<SMS>1-First-2024~03~01 10:10:00-2</SMS>");
  EXPECT_EQ(Credit(), 498);
  now_ += std::chrono::minutes(10);
  disk_is_full_ = false;
  EXPECT_EQ(Edit("schIDs=1"), "<ERROR>");
}

}  // namespace
}  // namespace quorvel::sandbox
