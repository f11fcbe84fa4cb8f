#include "hosts/console/message_text.h"

#include "hosts/console/text_file.h"

namespace quorvel {

namespace {

Text ReadMessageFile(const std::string& file) {
  const std::string place = "--message-file: " + file;
  const auto bytes = ReadFile(file);
  if (const auto* const failure = std::get_if<std::error_code>(&bytes))
    throw UsageError(place + ": " + failure->message());
  const auto text = DecodeText(std::get<std::string>(bytes));
  if (const auto* const fault = std::get_if<DecodeFault>(&text)) {
    throw UsageError(place + ":" + std::to_string(fault->line) + ": " + fault->reason);
  }
  return std::get<Text>(text);
}

}  // namespace

MessageText ReadMessage(const MessageOptions& options) {
  if (options.file) return {false, ReadMessageFile(*options.file)};
  const Text text = FromUtf8(options.text.value_or(""));
  if (text.starts_with(u"@@")) return {false, text.substr(1)};
  if (text.starts_with(u'@')) return {true, text.substr(1)};
  return {false, text};
}

}  // namespace quorvel
