#include "hosts/console/terminal.h"

#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <iostream>

namespace quorvel {

namespace {

// The rest of the line; Ctrl-C interrupts the read.
std::optional<std::string> ReadLine() {
  std::string line;
  for (;;) {
    char byte = 0;
    if (::read(STDIN_FILENO, &byte, 1) != 1) return std::nullopt;
    if (byte == '\n') return line;
    line.push_back(byte);
  }
}

// What is typed does not show while it lives.
class NoEcho {
 public:
  NoEcho() : changed_(::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!changed_) return;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;
  ~NoEcho() {
    if (changed_) ::tcsetattr(STDIN_FILENO, TCSADRAIN, &before_);
  }

 private:
  termios before_{};
  bool changed_;
};

}  // namespace

Terminal Terminal::Standard() {
  return {::isatty(STDIN_FILENO) == 1, ::isatty(STDERR_FILENO) == 1};
}

std::optional<std::string> Terminal::Ask(std::string_view prompt) const {
  if (!attended()) return std::nullopt;
  std::cerr << prompt << std::flush;
  return ReadLine();
}

std::optional<std::string> Terminal::AskSecret(std::string_view prompt) const {
  if (!attended()) return std::nullopt;
  std::optional<std::string> line;
  {
    const NoEcho no_echo;  // before the prompt invites to type
    std::cerr << prompt << std::flush;
    line = ReadLine();
  }
  std::cerr << std::endl;
  return line;
}

void Terminal::ShowProgress(std::string_view line) const {
  constexpr std::string_view kClearLine = "\r\x1B[K";
  if (messages_) std::cerr << kClearLine << line << std::flush;
}

}  // namespace quorvel
