#include "reports/report_sheet.h"

#include <algorithm>

namespace quorvel {

namespace {

// The columns' letters, made once each.
class Columns {
 public:
  TextView Letters(std::size_t column) {  // from 0
    while (letters_.size() <= column) {
      letters_.push_back(ColumnLetters(static_cast<std::int32_t>(letters_.size() + 1)));
    }
    return letters_[column];
  }

 private:
  std::vector<Text> letters_;
};

void WriteHeader(const std::vector<TextView>& header, Columns& columns, Sheet& sheet) {
  for (std::size_t i = 0; i < header.size(); ++i) {
    const CellAddress cell{columns.Letters(i), 1};
    sheet.Write(cell, header[i]);
    sheet.BoldCell(cell);
  }
}

}  // namespace

std::size_t WriteReport(const ReportTable& table, char16_t escaped_comma, Sheet& sheet, Progress& progress) {
  Columns columns;
  WriteHeader(table.header, columns, sheet);
  const auto rows_left = static_cast<std::size_t>(std::max(0, sheet.RowLimit() - 1));
  const std::size_t count = std::min(table.records.size(), rows_left);
  for (std::size_t i = 0; i < count; ++i) {
    const auto record = static_cast<std::int32_t>(i + 1);
    const std::vector<Text> fields = ReportFields(table.records[i], escaped_comma);
    for (std::size_t j = 0; j < fields.size(); ++j) {
      sheet.Write({columns.Letters(j), record + 1}, fields[j]);
    }
    progress.Step(u"Please wait... Fetching DR For Row No.: ", record);
    if (progress.CancelRequested) return i + 1;
  }
  return count;
}

}  // namespace quorvel
