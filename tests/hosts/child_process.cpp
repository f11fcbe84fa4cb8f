#include "child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace quorvel {

namespace {

struct Pipe {
  int read = -1;
  int write = -1;
};

Pipe OpenPipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return {ends[0], ends[1]};
}

// A terminal: what is written to one end is read, as typed or printed, from the other.
Pipe OpenTerminal() {
  const int controller = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (controller < 0 || ::grantpt(controller) != 0 || ::unlockpt(controller) != 0) {
    throw std::runtime_error("no terminal");
  }
  std::array<char, 128> name{};
  ::ptsname_r(controller, name.data(), name.size());
  return {controller, ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC)};
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Appends what can be read now; false at the end.
bool ReadSome(int descriptor, std::string& text) {
  std::array<char, 65536> block{};
  const ssize_t size = ::read(descriptor, block.data(), block.size());
  if (size > 0) text.append(block.data(), static_cast<std::size_t>(size));
  return size > 0;
}

bool ReadUntil(int descriptor, std::string& text, const std::string& wanted) {
  while (text.find(wanted) == std::string::npos) {
    if (!ReadSome(descriptor, text)) return false;
  }
  return true;
}

}  // namespace

ChildProcess::ChildProcess(const Start& start) {
  const Pipe output = start.on_terminal ? OpenTerminal() : OpenPipe();
  const Pipe error = start.on_terminal ? Pipe{} : OpenPipe();
  output_end_ = output.read;
  error_end_ = error.read;
  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  if (start.on_terminal) {
    posix_spawn_file_actions_adddup2(&actions, output.write, STDIN_FILENO);
  } else {
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  }
  posix_spawn_file_actions_adddup2(&actions, output.write, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, start.on_terminal ? output.write : error.write, STDERR_FILENO);

  std::vector<std::string> arguments{start.program};
  arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
  std::vector<std::string> environment;
  for (const auto& [name, value] : start.environment)
    environment.emplace_back(name).append("=").append(value);
  const int result = ::posix_spawn(&pid_, start.program.c_str(), &actions, nullptr,
                                   Pointers(arguments).data(), Pointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  ::close(output.write);
  if (error.write >= 0) ::close(error.write);
  if (result != 0) throw std::runtime_error("cannot start " + start.program);
}

ChildProcess::~ChildProcess() {
  if (pid_ > 0) {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
  ::close(output_end_);
  if (error_end_ >= 0) ::close(error_end_);
}

void ChildProcess::Type(const std::string& text) {
  if (::write(output_end_, text.data(), text.size()) < 0) throw std::runtime_error("cannot type");
}

void ChildProcess::Signal(int number) const {
  ::kill(pid_, number);
}

bool ChildProcess::WaitForOutput(const std::string& text) {
  return ReadUntil(output_end_, output_, text);
}

bool ChildProcess::WaitForError(const std::string& text) {
  return ReadUntil(error_end_, error_, text);
}

int ChildProcess::Wait() {
  std::array<pollfd, 2> ends{pollfd{output_end_, POLLIN, 0}, pollfd{error_end_, POLLIN, 0}};
  const std::array<std::string*, 2> texts{&output_, &error_};
  while (ends[0].fd >= 0 || ends[1].fd >= 0) {
    ::poll(ends.data(), ends.size(), -1);
    for (std::size_t i = 0; i < ends.size(); ++i) {
      if (ends[i].fd >= 0 && ends[i].revents != 0 && !ReadSome(ends[i].fd, *texts[i])) ends[i].fd = -1;
    }
  }
  int status = 0;
  ::waitpid(pid_, &status, 0);
  pid_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace quorvel
