#include "send/templates.h"

#include "platform/runtime_error.h"
#include "send/hex_text.h"

namespace quorvel {

namespace {

constexpr TextView kRecordEnd = u"|msg_text|";
constexpr TextView kNameEnd = u"|msg_name|";
constexpr TextView kSenderIds = u"|SenderIDs_Data|";
constexpr TextView kSenderIdEnd = u"|sid|";
constexpr char16_t kUnicodeFlag = u'1';

// A flag character, the name, kNameEnd, the text.
MessageTemplate ParseRecord(TextView record, const CodePage& code_page) {
  const std::size_t name_end = record.find(kNameEnd);
  if (name_end == TextView::npos || name_end == 0) throw InvalidCall();
  const TextView name = record.substr(1, name_end - 1);
  const TextView text = record.substr(name_end + kNameEnd.size());
  if (record.front() != kUnicodeFlag) return {Text(name), Text(text)};
  return {GetStringFromHex(name, code_page), GetStringFromHex(text, code_page)};
}

std::vector<Text> ParseSenderIds(TextView answer) {
  std::size_t start = answer.find(kSenderIds);
  if (start == TextView::npos) throw InvalidCall();
  start += kSenderIds.size();
  const std::size_t end = answer.find(kSenderIds, start);
  std::vector<Text> ids = Split(answer.substr(start, end - start), kSenderIdEnd);
  if (!ids.empty()) ids.pop_back();  // what follows the last end mark is no sender ID
  return ids;
}

}  // namespace

PulledLists ParsePullAnswer(TextView answer, const CodePage& code_page) {
  PulledLists lists;
  const bool has_templates = answer.find(kRecordEnd) != TextView::npos;
  if (has_templates) {
    std::vector<Text> records = Split(answer, kRecordEnd);
    records.pop_back();  // the sender IDs
    for (const Text& record : records) lists.templates.push_back(ParseRecord(record, code_page));
  }
  if (has_templates || answer.find(kSenderIds) != TextView::npos) lists.sender_ids = ParseSenderIds(answer);
  return lists;
}

}  // namespace quorvel
