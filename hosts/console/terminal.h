#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

// The user at standard input and standard error.
class Terminal {
 public:
  // Whether somebody types at standard input and reads standard error.
  Terminal(bool typed, bool read) : input_(typed), messages_(read) {}
  // As the program was started.
  [[nodiscard]] static Terminal Standard();

  // Whether there is somebody to ask.
  [[nodiscard]] bool attended() const { return input_ && messages_; }
  // Whether a line can be rewritten.
  [[nodiscard]] bool shows_progress() const { return messages_; }

  // The line that is typed after `prompt`, without its end; nothing at the end of the input, on Ctrl-C, and
  // when nobody is there.
  [[nodiscard]] std::optional<std::string> Ask(std::string_view prompt) const;
  // The same without showing what is typed.
  [[nodiscard]] std::optional<std::string> AskSecret(std::string_view prompt) const;

  // In place of the progress line that is on show; empty clears it.
  void ShowProgress(std::string_view line) const;

 private:
  bool input_;
  bool messages_;
};

}  // namespace quorvel
