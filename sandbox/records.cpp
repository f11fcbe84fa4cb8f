#include "sandbox/records.h"

namespace quorvel::sandbox {
namespace {

constexpr char kComma = '\x80';
constexpr char kHyphen = '~';

char Escape(char byte) {
  switch (byte) {
    case ',':
      return kComma;
    case '-':
      return kHyphen;
    case kComma:
      return '?';
    default:
      return byte;
  }
}

}  // namespace

std::string Envelope(std::string_view payload) {
  std::string reply = "<SMS>";
  reply += payload;
  reply += "</SMS>";
  return reply;
}

void RecordList::Add(std::initializer_list<std::string_view> fields) {
  if (!records_.empty()) records_ += ',';
  bool first = true;
  for (const std::string_view field : fields) {
    if (!first) records_ += '-';
    first = false;
    for (const char byte : field) records_ += Escape(byte);
  }
}

std::string RecordList::Reply() const {
  return Envelope(records_.empty() ? "0" : records_);
}

}  // namespace quorvel::sandbox
