#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "hosts/common/sqlite_settings.h"
#include "platform/memory/memory_settings.h"
#include "platform/runtime_error.h"
#include "temporary_folder.h"
#include "tests/contracts/settings_contract.h"

namespace quorvel {
namespace {

struct MemoryStore {
  MemorySettings store;
};

struct SqliteStore {
  TemporaryFolder folder;
  SqliteSettings store{folder.path() / "deep" / "er" / "settings.db"};
};

using Stores = testing::Types<MemoryStore, SqliteStore>;
INSTANTIATE_TYPED_TEST_SUITE_P(Console, SettingsContract, Stores);

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
