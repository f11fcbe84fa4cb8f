#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "platform/settings.h"

struct sqlite3;

namespace quorvel {

struct StoredSetting {
  Text application;
  Text section;
  Text key;
  Text value;
};

// Settings in an SQLite database that only its owner can read. The file and its folders are made by the first
// Write; until then, reading finds nothing. Several processes may use it at once: a write waits up to five
// seconds for its turn.
class SqliteSettings : public Settings {
 public:
  explicit SqliteSettings(std::filesystem::path file) : file_(std::move(file)) {}

  // Nothing also when the database cannot be read.
  [[nodiscard]] std::optional<Text> Read(const SettingPath& path) const override;
  // Throws RuntimeError 75 with the reason and the file.
  void Write(const SettingPath& path, TextView value) override;

  // Everything that is kept, in the order of application, section and key. Throws RuntimeError 75.
  [[nodiscard]] std::vector<StoredSetting> List() const;

 private:
  struct Closer {
    void operator()(sqlite3* database) const;
  };
  using Database = std::unique_ptr<sqlite3, Closer>;

  // Whether there is nothing to read: no file, or one that nobody wrote to yet.
  [[nodiscard]] bool Blank() const;
  // The file exists. Throws when it cannot be opened.
  [[nodiscard]] sqlite3* Open() const;

  std::filesystem::path file_;
  mutable Database database_;  // opened when first needed
  bool owner_only_ = false;    // others have been kept from reading it
};

// Where the settings are by the XDG base directories: `config_home` is $XDG_CONFIG_HOME and `home` is $HOME,
// either null when not set. Throws RuntimeError 76 when neither names an absolute folder.
[[nodiscard]] std::filesystem::path DefaultSettingsFile(const char* config_home, const char* home);

}  // namespace quorvel
