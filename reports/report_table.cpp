#include "reports/report_table.h"

namespace quorvel {

namespace {

constexpr char16_t kRecordEnd = u',';
constexpr char16_t kFieldEnd = u'-';

// Views of the parts; none of an empty text.
std::vector<TextView> Parts(TextView text, char16_t delimiter) {
  std::vector<TextView> parts;
  if (text.empty()) return parts;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(delimiter, start)) != TextView::npos; start = end + 1) {
    parts.push_back(text.substr(start, end - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

// No replacement is itself an escape, so that one pass does what replacing one after the other would.
Text WithoutEscapes(TextView field, char16_t escaped_comma) {
  Text text;
  text.reserve(field.size());
  for (std::size_t i = 0; i < field.size(); ++i) {
    const char16_t unit = field[i];
    if (unit == escaped_comma || unit == u'\x01') {
      text.push_back(u',');
    } else if (unit == u'~') {
      text.push_back(u'-');
    } else if (field.substr(i).starts_with(kCrLf)) {
      text.push_back(u' ');
      ++i;
    } else {
      text.push_back(unit);
    }
  }
  return text;
}

}  // namespace

ReportTable ParseReport(TextView payload) {
  ReportTable table;
  table.records = Parts(payload, kRecordEnd);
  if (table.records.empty()) return table;
  table.header = Parts(table.records.front(), kFieldEnd);
  table.records.erase(table.records.begin());
  return table;
}

std::vector<Text> ReportFields(TextView record, char16_t escaped_comma) {
  std::vector<Text> fields;
  for (const TextView field : Parts(record, kFieldEnd)) {
    fields.push_back(WithoutEscapes(field, escaped_comma));
  }
  return fields;
}

}  // namespace quorvel
