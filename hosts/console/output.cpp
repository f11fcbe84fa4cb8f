#include "hosts/console/output.h"

#include <algorithm>

namespace quorvel {

namespace {

bool IsControl(char16_t unit) {
  const bool kept = unit == u'\n' || unit == u'\t';
  return !kept && (unit < u' ' || (unit >= 0x7F && unit <= 0x9F));
}

}  // namespace

std::string Printable(TextView text) {
  Text lines = Replace(text, kCrLf, u"\n");
  std::replace_if(lines.begin(), lines.end(), IsControl, u'\uFFFD');
  return ToUtf8(lines);
}

void Output::Show(TextView title, TextView text) {
  messages_.push_back({Text(title), Text(text)});
  if (!json_) messages_stream_ << Printable(title) << ": " << Printable(text) << std::endl;
}

void Output::Complain(std::string_view text) {
  Show(u"quorvel", FromUtf8(text));
}

void Output::Print(std::initializer_list<std::string_view> parts) {
  if (json_) return;
  for (const std::string_view part : parts) results_ << part;
}

void Output::Finish(ExitStatus status) {
  if (json_) {
    nlohmann::json messages = nlohmann::json::array();
    for (const Message& message : messages_) {
      messages.push_back({{"title", ToUtf8(message.title)}, {"text", ToUtf8(message.text)}});
    }
    results_ << nlohmann::json{{"messages", messages},
                               {"result", result_},
                               {"status", static_cast<int>(status)}}
             << '\n';
  }
  results_.flush();
}

}  // namespace quorvel
