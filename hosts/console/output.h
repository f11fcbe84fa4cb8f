#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>
#include <vector>

#include "hosts/console/exit_status.h"
#include "platform/text.h"

namespace quorvel {

// A message that the user was shown.
struct Message {
  Text title;
  Text text;
};

// Where a command's messages and results go: messages to standard error as "title: text" and results to
// standard output, at once; or, as JSON, both into one object at the end.
class Output {
 public:
  Output(std::ostream& results, std::ostream& messages, bool json)
      : results_(results), messages_stream_(messages), json_(json) {}

  [[nodiscard]] bool json() const { return json_; }

  void Show(TextView title, TextView text);
  // A message of the program itself.
  void Complain(std::string_view text);
  [[nodiscard]] const std::vector<Message>& messages() const { return messages_; }

  // The text of the last one, empty when there was none.
  [[nodiscard]] Text LastMessage() const { return messages_.empty() ? Text() : messages_.back().text; }

  // A result as it is printed: these bytes one after the other, as they are.
  void Print(std::initializer_list<std::string_view> parts);
  // The same result's place in the JSON object.
  [[nodiscard]] nlohmann::json& result() { return result_; }

  // The end of the command; prints the JSON object.
  void Finish(ExitStatus status);

 private:
  std::ostream& results_;
  std::ostream& messages_stream_;
  bool json_;
  std::vector<Message> messages_;
  nlohmann::json result_ = nlohmann::json::object();
};

// `text` in UTF-8 for a terminal: line ends as LF, other control characters as U+FFFD.
[[nodiscard]] std::string Printable(TextView text);

}  // namespace quorvel
