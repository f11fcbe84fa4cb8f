#include "hosts/console/csv.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "hosts/console/text_file.h"

namespace quorvel {

namespace {

// Reads one table into a sheet, field by field.
class CsvReader {
 public:
  CsvReader(TextView text, MemorySheet& sheet) : text_(text), sheet_(sheet) {}

  std::optional<CsvFault> Read() {
    while (at_ < text_.size() && !fault_) {
      if (++row_ > MemorySheet::kRowLimit) {
        Fail("more than 1,048,576 rows");
        break;
      }
      ReadRow();
    }
    return fault_;
  }

 private:
  [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }
  [[nodiscard]] bool AtLineEnd() const { return AtEnd() || text_[at_] == u'\r' || text_[at_] == u'\n'; }

  void Fail(std::string reason) { FailAt(line_, std::move(reason)); }
  void FailAt(std::size_t line, std::string reason) { fault_ = {.line = line, .reason = std::move(reason)}; }

  void ReadRow() {
    for (std::size_t column = 0; !fault_; ++column) {
      if (column == static_cast<std::size_t>(MemorySheet::kColumnLimit))
        return Fail("more than 16,384 columns");
      const TextView field = !AtEnd() && text_[at_] == u'"' ? QuotedField() : PlainField();
      if (fault_) return;
      Keep(column, field);
      if (AtLineEnd()) return SkipLineEnd();
      ++at_;  // the comma
    }
  }

  TextView PlainField() {
    const std::size_t end = std::min(text_.find_first_of(u",\r\n", at_), text_.size());
    const TextView field = text_.substr(at_, end - at_);
    at_ = end;
    return field;
  }

  // The field without its quotes; valid until the next call.
  TextView QuotedField() {
    const std::size_t first_line = line_;
    unquoted_.clear();
    for (++at_;; ++at_) {
      const std::size_t end = text_.find_first_of(u"\"\r\n", at_);
      if (end == TextView::npos) {
        FailAt(first_line, "a quoted field that begins here is not closed");
        return {};
      }
      unquoted_.append(text_.substr(at_, end - at_));
      at_ = end;
      if (text_[at_] != u'"') {
        TakeLineBreak();
      } else if (at_ + 1 < text_.size() && text_[at_ + 1] == u'"') {
        unquoted_.push_back(text_[++at_]);
      } else {
        break;
      }
    }
    ++at_;  // the closing quote
    if (!AtLineEnd() && text_[at_] != u',') Fail("text after the closing quote of a field");
    return unquoted_;
  }

  // A line break inside a quoted field; leaves at_ on its last unit.
  void TakeLineBreak() {
    ++line_;
    unquoted_.push_back(text_[at_]);
    if (text_[at_] == u'\r' && at_ + 1 < text_.size() && text_[at_ + 1] == u'\n')
      unquoted_.push_back(text_[++at_]);
  }

  void SkipLineEnd() {
    if (AtEnd()) return;
    ++line_;
    const bool crlf = text_[at_] == u'\r' && at_ + 1 < text_.size() && text_[at_ + 1] == u'\n';
    at_ += crlf ? 2 : 1;
  }

  void Keep(std::size_t column, TextView field) {
    if (field.find(u'\0') != TextView::npos) return Fail("a zero character");
    if (field.empty()) return;
    while (letters_.size() <= column)
      letters_.push_back(ColumnLetters(static_cast<std::int32_t>(letters_.size() + 1)));
    sheet_.Write({letters_[column], row_}, field);
  }

  TextView text_;
  MemorySheet& sheet_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  std::int32_t row_ = 0;
  Text unquoted_;
  std::vector<Text> letters_;
  std::optional<CsvFault> fault_;
};

void WriteField(TextView field, std::ostream& out) {
  const std::string bytes = ToUtf8(field);
  if (bytes.find_first_of(",\"\r\n") == std::string::npos) {
    out << bytes;
    return;
  }
  out << '"';
  for (const char byte : bytes) {
    if (byte == '"') out << '"';
    out << byte;
  }
  out << '"';
}

}  // namespace

std::optional<CsvFault> ReadCsv(std::string_view bytes, MemorySheet& sheet) {
  const auto decoded = DecodeText(bytes);
  if (const auto* const fault = std::get_if<DecodeFault>(&decoded))
    return CsvFault{fault->line, fault->reason};
  return CsvReader(std::get<Text>(decoded), sheet).Read();
}

std::optional<CsvFault> ReadCsvFile(const std::filesystem::path& file, MemorySheet& sheet) {
  const auto bytes = ReadFile(file);
  if (const auto* const failure = std::get_if<std::error_code>(&bytes))
    return CsvFault{0, failure->message()};
  return ReadCsv(std::get<std::string>(bytes), sheet);
}

void WriteCsv(MemorySheet& sheet, std::ostream& out) {
  const std::int32_t rows = sheet.UsedRows();
  const std::int32_t columns = sheet.UsedColumns();
  for (std::int32_t row = 1; row <= rows; ++row) {
    for (std::int32_t column = 1; column <= columns; ++column) {
      if (column > 1) out << ',';
      WriteField(sheet.CellText({ColumnLetters(column), row}), out);
    }
    out << "\r\n";
  }
}

}  // namespace quorvel
