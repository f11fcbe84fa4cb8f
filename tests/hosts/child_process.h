#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace quorvel {

// A program that a test has started. Its standard input is empty, unless it runs on a terminal of its own;
// what it prints is read by the test.
class ChildProcess {
 public:
  struct Start {
    std::string program;
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment;  // all that it has
    bool on_terminal = false;  // standard input, output and error are one terminal, read as output
  };

  explicit ChildProcess(const Start& start);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Ends the program if it still runs.
  ~ChildProcess();

  // Types on the terminal.
  void Type(const std::string& text);
  void Signal(int number) const;
  // Reads standard output, or standard error, until it holds `text`. False when it ended without.
  bool WaitForOutput(const std::string& text);
  bool WaitForError(const std::string& text);
  // Reads both to their ends. The exit status, or minus the number of the signal that ended the program.
  int Wait();

  [[nodiscard]] const std::string& output() const { return output_; }
  [[nodiscard]] const std::string& error() const { return error_; }

 private:
  pid_t pid_ = -1;
  int output_end_ = -1;
  int error_end_ = -1;
  std::string output_;
  std::string error_;
};

}  // namespace quorvel
