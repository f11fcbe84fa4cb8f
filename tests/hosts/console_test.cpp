#include "console_test.h"

#include <fstream>
#include <sstream>

#include "hosts/common/curl_internet.h"

namespace quorvel {

namespace {

// The whole answer to a request on the sandbox itself; a GET without a body.
std::string Ask(std::int16_t port, std::string_view path, std::optional<std::string_view> body) {
  CurlInternet internet;
  const auto session =
      internet.Open({.agent = "test", .access = Internet::Access::kDirect, .proxy = {}, .bypass = {}});
  Internet::Handle answer{};
  if (body) {
    const auto connection =
        internet.Connect(session, {.server = u"127.0.0.1", .port = port, .user = {}, .password = {}});
    answer = internet.OpenRequest(connection,
                                  {.verb = "POST", .object = path, .version = "HTTP/1.1", .referrer = ""});
    internet.Send(answer, "Content-Type: text/plain\r\n", *body);
  } else {
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + std::string(path);
    answer = internet.OpenUrl(session, FromUtf8(url), kFlagReload);
  }
  return internet.Read(answer, SIZE_MAX).bytes;
}

}  // namespace

void PrintTo(const RunResult& run, std::ostream* out) {
  *out << "status " << run.status << "\noutput: " << run.output << "\nerror: " << run.error;
}

ChildProcess::Start ConsoleTest::Start(const std::vector<std::string>& arguments) const {
  ChildProcess::Start start{.program = QUORVEL_PROGRAM, .arguments = arguments, .environment = environment_};
  start.arguments.insert(start.arguments.begin(), {"--settings", Path("settings.db")});
  return start;
}

RunResult ConsoleTest::Quorvel(const std::vector<std::string>& arguments) {
  ChildProcess program(Start(arguments));
  const int status = program.Wait();
  return {status, program.output(), program.error()};
}

void ConsoleTest::UseProxy(std::int16_t port) {
  const RunResult run =
      Quorvel({"proxy", "--type", "named", "--host", "127.0.0.1", "--port", std::to_string(port)});
  ASSERT_EQ(run.status, 0) << run.error;
}

std::string ConsoleTest::File(const std::string& name, const std::string& content) {
  std::ofstream(Path(name), std::ios::binary) << content;
  return Path(name);
}

std::string ConsoleTest::ReadFile(const std::string& name) const {
  std::ostringstream content;
  content << std::ifstream(Path(name), std::ios::binary).rdbuf();
  return content.str();
}

void SandboxTest::SetUp() {
  sandbox_.emplace(
      ChildProcess::Start{.program = SANDBOX_PROGRAM, .arguments = {"--port", "0"}, .environment = {}});
  ASSERT_TRUE(sandbox_->WaitForOutput("\n")) << sandbox_->error();
  const std::string& line = sandbox_->output();
  port_ = static_cast<std::int16_t>(std::stoi(line.substr(line.rfind(':') + 1)));
  UseProxy(port_);
  const RunResult first =
      Quorvel({"--crn", "1001", "--user", "demo", "balance"});  // later runs remember both
  ASSERT_EQ(first.status, 0) << first.error;
}

nlohmann::json SandboxTest::Received() const {
  return nlohmann::json::parse(Ask(port_, "/_sandbox/messages", std::nullopt));
}

void SandboxTest::Fail(const std::string& rule) const {
  ASSERT_EQ(Ask(port_, "/_sandbox/fail", rule), "rules replaced\n");
}

}  // namespace quorvel
