#include "hosts/common/sqlite_settings.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr int kBusyTimeout = 5000;  // milliseconds
constexpr mode_t kOwnerOnlyFile = 0600;
constexpr mode_t kOwnerOnlyFolder = 0700;

constexpr const char* kCreateTable =
    "CREATE TABLE IF NOT EXISTS settings (application TEXT NOT NULL, section TEXT NOT NULL, key TEXT NOT NULL, "
    "value TEXT NOT NULL, PRIMARY KEY (application, section, key)) WITHOUT ROWID";

RuntimeError Failure(const std::filesystem::path& file, std::string_view reason) {
  return {75, u"Settings file " + FromUtf8(file.string()) + u": " + FromUtf8(reason)};
}

RuntimeError SystemFailure(const std::filesystem::path& file) {
  return Failure(file, std::generic_category().message(errno));
}

RuntimeError DatabaseFailure(const std::filesystem::path& file, sqlite3* database) {
  return Failure(file, sqlite3_errmsg(database));
}

class Statement {
 public:
  Statement(sqlite3* database, const std::filesystem::path& file, const char* sql)
      : database_(database), file_(file) {
    if (sqlite3_prepare_v2(database, sql, -1, &statement_, nullptr) != SQLITE_OK) {
      throw DatabaseFailure(file, database);
    }
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(statement_); }

  void Bind(int position, TextView text) {
    const std::string bytes = ToUtf8(text);
    const int result =
        sqlite3_bind_text64(statement_, position, bytes.data(), bytes.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    if (result != SQLITE_OK) throw DatabaseFailure(file_, database_);
  }

  void Bind(const SettingPath& path) {
    Bind(1, path.application);
    Bind(2, path.section);
    Bind(3, path.key);
  }

  // Whether there is a row.
  bool Step() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) throw DatabaseFailure(file_, database_);
    return result == SQLITE_ROW;
  }

  [[nodiscard]] Text Column(int index) const {
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement_, index));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, index));
    return bytes == nullptr ? Text() : FromUtf8({bytes, size});
  }

 private:
  sqlite3* database_;
  const std::filesystem::path& file_;
  sqlite3_stmt* statement_ = nullptr;
};

void CreateFolders(const std::filesystem::path& folder, const std::filesystem::path& file) {
  if (folder.empty() || std::filesystem::exists(folder)) return;
  CreateFolders(folder.parent_path(), file);
  if (::mkdir(folder.c_str(), kOwnerOnlyFolder) != 0 && errno != EEXIST) throw SystemFailure(file);
}

// Makes the file if it is missing, and keeps others from reading it.
void CreateOwnerOnly(const std::filesystem::path& file) {
  CreateFolders(file.parent_path(), file);
  const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kOwnerOnlyFile);
  if (descriptor < 0) throw SystemFailure(file);
  const bool ours_only = ::fchmod(descriptor, kOwnerOnlyFile) == 0;
  const int reason = errno;
  ::close(descriptor);
  errno = reason;
  if (!ours_only) throw SystemFailure(file);
}

bool IsAbsoluteFolder(const char* folder) {
  return folder != nullptr && folder[0] == '/';
}

}  // namespace

void SqliteSettings::Closer::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

bool SqliteSettings::Blank() const {
  if (database_ != nullptr) return false;
  std::error_code reason;
  const std::uintmax_t size = std::filesystem::file_size(file_, reason);
  return reason ? reason == std::errc::no_such_file_or_directory : size == 0;
}

sqlite3* SqliteSettings::Open() const {
  if (database_ != nullptr) return database_.get();
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(file_.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  Database database(opened);
  if (result != SQLITE_OK) throw DatabaseFailure(file_, opened);
  sqlite3_busy_timeout(opened, kBusyTimeout);
  database_ = std::move(database);
  return database_.get();
}

std::optional<Text> SqliteSettings::Read(const SettingPath& path) const {
  if (Blank()) return std::nullopt;
  try {
    Statement statement(Open(), file_,
                        "SELECT value FROM settings WHERE application = ? AND section = ? AND key = ?");
    statement.Bind(path);
    if (!statement.Step()) return std::nullopt;
    return statement.Column(0);
  } catch (const RuntimeError&) {  // what cannot be read is not there; the next Write says why
    return std::nullopt;
  }
}

void SqliteSettings::Write(const SettingPath& path, TextView value) {
  if (!owner_only_) CreateOwnerOnly(file_);
  owner_only_ = true;
  sqlite3* const database = Open();
  Statement(database, file_, kCreateTable).Step();
  Statement statement(database, file_,
                      "INSERT INTO settings (application, section, key, value) VALUES (?, ?, ?, ?) "
                      "ON CONFLICT DO UPDATE SET value = excluded.value");
  statement.Bind(path);
  statement.Bind(4, value);
  statement.Step();
}

std::vector<StoredSetting> SqliteSettings::List() const {
  std::vector<StoredSetting> settings;
  if (Blank()) return settings;
  Statement statement(
      Open(), file_,
      "SELECT application, section, key, value FROM settings ORDER BY application, section, key");
  while (statement.Step()) {
    settings.push_back({.application = statement.Column(0),
                        .section = statement.Column(1),
                        .key = statement.Column(2),
                        .value = statement.Column(3)});
  }
  return settings;
}

std::filesystem::path DefaultSettingsFile(const char* config_home, const char* home) {
  constexpr const char* kFile = "quorvel/settings.db";
  if (IsAbsoluteFolder(config_home)) return std::filesystem::path(config_home) / kFile;
  if (IsAbsoluteFolder(home)) return std::filesystem::path(home) / ".config" / kFile;
  throw RuntimeError(76, u"No folder for the settings: neither XDG_CONFIG_HOME nor HOME is set");
}

}  // namespace quorvel
