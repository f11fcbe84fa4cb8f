#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "hosts/common/sqlite_settings.h"
#include "platform/memory/memory_settings.h"
#include "platform/runtime_error.h"
#include "temporary_folder.h"

namespace quorvel {
namespace {

template <class Store>
struct Fixture;

template <>
struct Fixture<MemorySettings> {
  MemorySettings store;
};

template <>
struct Fixture<SqliteSettings> {
  TemporaryFolder folder;
  SqliteSettings store{folder.path() / "deep" / "er" / "settings.db"};
};

template <class Store>
class SettingsContract : public testing::Test {
 protected:
  Settings& store() { return fixture_.store; }

 private:
  Fixture<Store> fixture_;
};

using Stores = testing::Types<MemorySettings, SqliteSettings>;
TYPED_TEST_SUITE(SettingsContract, Stores);

TYPED_TEST(SettingsContract, ReadsWhatWasWrittenLastUnderThatKeyAlone) {
  Settings& store = this->store();
  EXPECT_EQ(store.Read({u"App", u"Section", u"Key"}), std::nullopt);
  store.Write({u"App", u"Section", u"Key"}, u"first");
  store.Write({u"App", u"Section", u"Key"}, u"second");
  store.Write({u"App", u"Section", u"Other"}, u"o");
  store.Write({u"App", u"Elsewhere", u"Key"}, u"e");
  EXPECT_EQ(store.Read({u"App", u"Section", u"Key"}), u"second");
  EXPECT_EQ(store.Read({u"App", u"Section", u"Other"}), u"o");
  EXPECT_EQ(store.Read({u"App", u"Elsewhere", u"Key"}), u"e");
  EXPECT_EQ(store.Read({u"AppS", u"ection", u"Key"}), std::nullopt);
}

TYPED_TEST(SettingsContract, KeepsEveryText) {
  Settings& store = this->store();
  for (const Text& value : {Text(), Text(u"  blanks  "), Text(u"quo'te\" \\ \r\n"),
                            Text(u"\u0627\u8BDD\U0001F600"), Text(u"with\0zero", 9), Text(70000, u'x')}) {
    store.Write({u"App", u"Section", u"Key"}, value);
    EXPECT_EQ(store.Read({u"App", u"Section", u"Key"}), value);
  }
}

mode_t ModeOf(const std::filesystem::path& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 0777;
}

TEST(SqliteSettings, OnlyTheOwnerCanReadWhatAWriteMakes) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "made" / "settings.db";
  SqliteSettings store(file);
  EXPECT_EQ(store.Read({u"A", u"S", u"K"}), std::nullopt);
  EXPECT_TRUE(store.List().empty());
  EXPECT_FALSE(std::filesystem::exists(file.parent_path()));  // reading makes nothing
  store.Write({u"A", u"S", u"K"}, u"v");
  EXPECT_EQ(ModeOf(file), 0600U);
  EXPECT_EQ(ModeOf(file.parent_path()), 0700U);
}

TEST(SqliteSettings, AnExistingFileIsClosedToOthersBeforeItIsWritten) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "settings.db";
  std::ofstream(file).close();
  std::filesystem::permissions(file, std::filesystem::perms(0644));
  SqliteSettings store(file);
  EXPECT_TRUE(store.List().empty());
  store.Write({u"A", u"S", u"K"}, u"v");
  EXPECT_EQ(ModeOf(file), 0600U);
}

TEST(SqliteSettings, SeveralReadersSeeWhatOneWrites) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "settings.db";
  SqliteSettings writer(file);
  SqliteSettings reader(file);
  EXPECT_EQ(reader.Read({u"A", u"S", u"K"}), std::nullopt);
  writer.Write({u"A", u"S", u"K"}, u"v");
  EXPECT_EQ(reader.Read({u"A", u"S", u"K"}), u"v");
  reader.Write({u"A", u"S", u"K"}, u"w");
  EXPECT_EQ(writer.Read({u"A", u"S", u"K"}), u"w");
  writer.Write({u"A", u"R", u"K"}, u"r");
  const auto list = SqliteSettings(file).List();
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].section, u"R");
  EXPECT_EQ(list[1].value, u"w");
}

TEST(SqliteSettings, AFailureNamesTheFileAndTheReason) {
  const TemporaryFolder folder;
  const std::filesystem::path garbage = folder.path() / "garbage.db";
  std::ofstream(garbage) << std::string(4096, 'g');
  SqliteSettings not_a_database(garbage);
  EXPECT_EQ(not_a_database.Read({u"A", u"S", u"K"}), std::nullopt);
  SqliteSettings no_folder(garbage / "settings.db");
  for (SqliteSettings* store : {&not_a_database, &no_folder}) {
    try {
      store->Write({u"A", u"S", u"K"}, u"v");
      FAIL() << "kept nowhere";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 75);
      EXPECT_NE(ToUtf8(error.description()).find(garbage.string()), std::string::npos) << error.what();
    }
  }
  EXPECT_THROW((void)not_a_database.List(), RuntimeError);
}

TEST(DefaultSettingsFile, FollowsTheBaseDirectories) {
  EXPECT_EQ(DefaultSettingsFile("/config", "/home/me"), "/config/quorvel/settings.db");
  EXPECT_EQ(DefaultSettingsFile(nullptr, "/home/me"), "/home/me/.config/quorvel/settings.db");
  EXPECT_EQ(DefaultSettingsFile("", "/home/me"), "/home/me/.config/quorvel/settings.db");
  EXPECT_EQ(DefaultSettingsFile("relative", "/home/me"), "/home/me/.config/quorvel/settings.db");
  EXPECT_THROW((void)DefaultSettingsFile(nullptr, nullptr), RuntimeError);
}

}  // namespace
}  // namespace quorvel
