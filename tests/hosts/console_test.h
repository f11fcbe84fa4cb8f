#pragma once

#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "child_process.h"
#include "temporary_folder.h"

namespace quorvel {

// How a run of the program ended.
struct RunResult {
  int status = -1;
  std::string output;
  std::string error;
};
void PrintTo(const RunResult& run, std::ostream* out);

// Runs the real program, with settings and files of its own, as the user "demo" of the gateway's CRN 1001.
class ConsoleTest : public testing::Test {
 protected:
  // Runs with the settings of this test and reads to the end.
  RunResult Quorvel(const std::vector<std::string>& arguments);
  // What such a run is started with.
  [[nodiscard]] ChildProcess::Start Start(const std::vector<std::string>& arguments) const;
  // Reaches every gateway through the server at that port.
  void UseProxy(std::int16_t port);

  // Writes a file of the test's folder; its path.
  std::string File(const std::string& name, const std::string& content);
  [[nodiscard]] std::string ReadFile(const std::string& name) const;
  [[nodiscard]] std::string Path(const std::string& name) const { return (folder_.path() / name).string(); }

  std::map<std::string, std::string> environment_{{"QUORVEL_PASSWORD", "demo"}};

 private:
  TemporaryFolder folder_;
};

// The same against the real sandbox.
class SandboxTest : public ConsoleTest {
 protected:
  void SetUp() override;

  // What the gateway has received, from GET /_sandbox/messages.
  [[nodiscard]] nlohmann::json Received() const;
  // Makes the gateway fail by a rule as its --fail takes it.
  void Fail(const std::string& rule) const;

 private:
  std::optional<ChildProcess> sandbox_;
  std::int16_t port_ = 0;
};

}  // namespace quorvel
