#include "sandbox/data_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace quorvel::sandbox {
namespace {

namespace fs = std::filesystem;

Data FullData() {
  Data data = DefaultData();
  data.accounts.front().password = u"p\u00e4\u20ac\"\\";
  Job job;
  job.id = 7;
  job.user = u"demo";
  job.path = "/x";
  job.sender = u"Q";
  job.service = u"31";
  job.unicode = true;
  job.wap_url = u"http://x";
  job.scheduled = true;
  job.title = u"T";
  job.notify = true;
  job.email = EmailCopy{u"S", u"f@x"};
  job.submitted = *FromIso("2024-02-29T23:59:59");
  job.messages = {{u"11", u"\u0627\U0001F600\x01", u"a@b", *FromIso("2024-03-01T00:00:00")},
                  {u"", u"", u"", {}}};
  data.jobs = {job};
  return data;
}

std::string ErrorOf(const std::string& json) {
  const auto outcome = ParseData(json);
  const auto* error = std::get_if<DataError>(&outcome);
  return error == nullptr ? "no error" : error->place + ": " + error->reason;
}

class DataFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ =
        fs::path(::testing::TempDir()) /
        ("sandbox_data_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  fs::path folder_;
};

TEST_F(DataFileTest, RoundTripLosesNothing) {
  const std::string dumped = DumpData(FullData());
  const auto outcome = ParseData(dumped);
  ASSERT_TRUE(std::holds_alternative<Data>(outcome)) << ErrorOf(dumped);
  const Data& data = std::get<Data>(outcome);
  EXPECT_EQ(DumpData(data), dumped);
  const Message& message = data.jobs.at(0).messages.at(0);
  EXPECT_EQ(message.text, u"\u0627\U0001F600\x01");
  EXPECT_EQ(message.email, u"a@b");
  EXPECT_EQ(data.accounts.at(0).password, u"p\u00e4\u20ac\"\\");
  EXPECT_EQ(data.jobs.at(0).service, u"31");
}

TEST_F(DataFileTest, LeavesOutWhatCanBeLeftOut) {
  const auto outcome = ParseData(R"({"accounts": [{"crn": "1", "host": "h", "user": "u", "password": "p",
      "templates": [{"name": "é€", "text": "t"}, {"name": "ا", "text": "t"}]}]})");
  ASSERT_TRUE(std::holds_alternative<Data>(outcome));
  const Account& account = std::get<Data>(outcome).accounts.at(0);
  EXPECT_EQ(account.credit, 0);
  EXPECT_FALSE(account.templates.at(0).unicode);
  EXPECT_TRUE(account.templates.at(1).unicode);
}

TEST_F(DataFileTest, NamesPlaceAndReasonOfAnError) {
  EXPECT_TRUE(ErrorOf("{\n  \"modes\": [,]\n}").starts_with("line 2, column 13: "))
      << ErrorOf("{\n  \"modes\": [,]\n}");
  EXPECT_TRUE(ErrorOf("").starts_with("line 1, column 1: "));
  EXPECT_EQ(ErrorOf("[]"), ": must be an object");
  EXPECT_EQ(ErrorOf(R"({"modes": ["L"]})"),
            "/modes/0: must be a letter, \"-\" and a description without \",\"");
  EXPECT_EQ(ErrorOf(R"({"accounts": {}})"), "/accounts: must be a list");
  EXPECT_EQ(ErrorOf(R"({"accounts": [{"crn": "1"}]})"), "/accounts/0: lacks \"host\"");

  const std::string account = R"({"crn": "1", "host": "h", "user": "u", "password": "p")";
  const auto with = [&account](const std::string& more) {
    return "{\"accounts\": [" + account + more + "}]}";
  };
  EXPECT_EQ(ErrorOf(with("")), "no error");
  EXPECT_EQ(ErrorOf(with(R"(, "credit": -1)")), "/accounts/0/credit: must be a whole number, 0 or more");
  EXPECT_EQ(ErrorOf(with(R"(, "credit": 1.5)")), "/accounts/0/credit: must be a whole number, 0 or more");
  EXPECT_EQ(ErrorOf(with(R"(, "credit": 18446744073709551615)")),
            "/accounts/0/credit: must be a whole number, 0 or more");
  EXPECT_EQ(ErrorOf(with(R"(, "blocked": "no")")), "/accounts/0/blocked: must be true or false");
  EXPECT_EQ(ErrorOf(with(R"(, "blcoked": true)")), "/accounts/0: has an unknown key \"blcoked\"");
  EXPECT_EQ(ErrorOf(with(R"(, "senders": ["A", 5])")), "/accounts/0/senders/1: must be a text");
  EXPECT_EQ(
      ErrorOf(with(R"(, "reports": [{"number": "1", "message": "", "sender": "", "status": "", "mode": "L",
                            "submitted": "2024-02-30T00:00:00"}])")),
      "/accounts/0/reports/0/submitted: must be a moment such as \"2024-01-31T09:05:00\"");
  EXPECT_EQ(ErrorOf("{\"accounts\": [" + account + "}, " + account + "}]}"),
            ": has two accounts of user \"u\"");
}

TEST_F(DataFileTest, SavesOverTheFileItWasReadFrom) {
  const fs::path file = folder_ / "real.json";
  std::ofstream(file) << "{}";
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
  const fs::path link = folder_ / "link.json";
  fs::create_symlink(file, link);
  EXPECT_EQ(SaveData(link, FullData()), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 2);
  const auto outcome = LoadData(file);
  ASSERT_TRUE(std::holds_alternative<Data>(outcome));
  EXPECT_EQ(DumpData(std::get<Data>(outcome)), DumpData(FullData()));
}

TEST_F(DataFileTest, ReportsWhatCannotBeReadOrWritten) {
  EXPECT_TRUE(std::holds_alternative<DataError>(LoadData(folder_ / "absent.json")));
  EXPECT_TRUE(SaveData(folder_ / "absent.json", DefaultData()));
  const fs::path file = folder_ / "data.json";
  std::ofstream(file) << "old";
  fs::create_directory(folder_ / "data.json.new");  // in the way of the new file
  EXPECT_TRUE(SaveData(file, DefaultData()));
  std::string kept;
  std::ifstream(file) >> kept;
  EXPECT_EQ(kept, "old");
}

}  // namespace
}  // namespace quorvel::sandbox
