#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

// The program with its output in pipes.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    std::array<int, 2> out{};
    if (pipe(out.data()) != 0) throw std::runtime_error("pipe");
    pid_ = fork();
    if (pid_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      dup2(out[1], STDERR_FILENO);
      close(out[0]);
      close(out[1]);
      arguments.insert(arguments.begin(), SANDBOX_PROGRAM);
      std::vector<char*> argv;
      argv.reserve(arguments.size() + 1);
      for (std::string& argument : arguments) argv.push_back(argument.data());
      argv.push_back(nullptr);
      execv(SANDBOX_PROGRAM, argv.data());
      _exit(127);
    }
    close(out[1]);
    output_ = fdopen(out[0], "r");
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    fclose(output_);
  }

  std::string Line() {
    std::string line;
    for (int c = fgetc(output_); c != EOF && c != '\n'; c = fgetc(output_)) line += static_cast<char>(c);
    return line;
  }

  std::string Rest() {
    std::string rest;
    for (int c = fgetc(output_); c != EOF; c = fgetc(output_)) rest += static_cast<char>(c);
    return rest;
  }

  void Signal(int signal) const { kill(pid_, signal); }

  // The exit status, or minus the signal that ended it.
  int Wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  pid_t pid_ = -1;
  FILE* output_ = nullptr;
};

TEST(SandboxProgram, SaysWhereItListensAndEndsCleanlyOnSignals) {
  for (const int signal : {SIGINT, SIGTERM}) {
    Program program({"--port", "0", "--fail", "slow", "--fail", "login=001"});
    EXPECT_TRUE(program.Line().starts_with("listening on http://127.0.0.1:"));
    program.Signal(signal);
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_EQ(program.Rest(), "");
  }
}

TEST(SandboxProgram, PrintedDataCanBeReadAgain) {
  const auto file =
      std::filesystem::path(::testing::TempDir()) / ("quorvel_sandbox_" + std::to_string(getpid()) + ".json");
  Program first({"--print-data"});
  const std::string printed = first.Rest();
  EXPECT_EQ(first.Wait(), 0);
  std::ofstream(file) << printed;
  Program second({"--data", file.string(), "--print-data"});
  EXPECT_EQ(second.Rest(), printed);
  EXPECT_EQ(second.Wait(), 0);
  std::ofstream(file) << "{\"accounts\": 5}";
  Program third({"--data", file.string()});
  EXPECT_EQ(third.Rest(), "quorvel-sandbox: " + file.string() + ": /accounts: must be a list\n");
  EXPECT_EQ(third.Wait(), 4);
  std::filesystem::remove(file);
}

TEST(SandboxProgram, NamesAWrongArgument) {
  Program rule({"--fail", "send=nap"});
  EXPECT_NE(rule.Rest().find("\"send=nap\""), std::string::npos);
  EXPECT_EQ(rule.Wait(), 2);
  Program port({"--port", "70000"});
  EXPECT_NE(port.Rest().find("--port"), std::string::npos);
  EXPECT_EQ(port.Wait(), 2);
}

}  // namespace
