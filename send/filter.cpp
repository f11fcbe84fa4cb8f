#include "send/filter.h"

#include <algorithm>

#include "addin/common/alert.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u" S M S ";
constexpr TextView kFieldPrefix = u"FC_";
constexpr TextView kRowField = u"RowNumber";
constexpr std::int32_t kNumberSize = 20;
constexpr std::int32_t kIntegerSize = 15;
constexpr std::int32_t kTextSize = 500;
constexpr std::int32_t kAttributes = -1;
constexpr std::int32_t kLastColumn = 16384;

bool IsColumn(TextView letters) {
  const std::int32_t number = ColumnNumber(letters);
  return number >= 1 && number <= kLastColumn;
}

Text FieldOf(const Text& column) {
  return Text(kFieldPrefix) + column;
}

// A formula that shows nothing leaves an empty text in its cell.
bool IsBlank(const CellValue& value) {
  const auto* const text = std::get_if<Text>(&value);
  return std::holds_alternative<std::monostate>(value) || (text != nullptr && text->empty());
}

// Loads rows of a sheet into a recordset.
class FilterTable {
 public:
  FilterTable(const AddInContext& context, const SendChoices& choices, TextView formula, Sheet& sheet)
      : context_(context),
        choices_(choices),
        sheet_(sheet),
        columns_(ScanFilterColumns(choices.message)),
        formula_(RewriteFormula(formula, columns_)),
        recordset_(context.platform.recordsets.Create()) {}

  // As the recordset understands it.
  [[nodiscard]] const Text& formula() const { return formula_; }
  [[nodiscard]] Recordset& recordset() { return *recordset_; }

  // False when the user cancelled.
  [[nodiscard]] bool Load(const std::vector<std::int32_t>& rows) {
    AppendFields(rows);
    recordset_->Open();
    context_.progress.CancelRequested = false;
    for (const std::int32_t row : rows) {
      context_.progress.Step(u"Please wait - Processing Record No. ", row);
      if (context_.progress.CancelRequested) return false;
      AddRecord(row);
    }
    return true;
  }

 private:
  void AppendFields(const std::vector<std::int32_t>& rows) {
    recordset_->AppendField(choices_.number_column, FieldType::kVarChar, kNumberSize, kAttributes);
    for (const Text& column : columns_) {
      const FieldType type = TypeOf(column, rows);
      const std::int32_t size = type == FieldType::kInteger     ? kIntegerSize
                                : type == FieldType::kTimestamp ? 0
                                                                : kTextSize;
      recordset_->AppendField(FieldOf(column), type, size, kAttributes);
    }
    recordset_->AppendField(kRowField, FieldType::kInteger, kIntegerSize, kAttributes);
  }

  // By the first of the rows in which the column holds anything.
  FieldType TypeOf(const Text& column, const std::vector<std::int32_t>& rows) {
    for (const std::int32_t row : rows) {
      const CellValue value = sheet_.Value({column, row});
      if (IsBlank(value)) continue;
      if (IsNumeric(value)) return FieldType::kInteger;
      return ReadDate(value, context_.platform.clock.Now()) ? FieldType::kTimestamp : FieldType::kVarChar;
    }
    return FieldType::kVarChar;
  }

  void AddRecord(std::int32_t row) {
    recordset_->AddNew();
    SetValue(choices_.number_column, {choices_.number_column, row});
    for (const Text& column : columns_) SetValue(FieldOf(column), {column, row});
    recordset_->SetValue(kRowField, static_cast<double>(row));
    recordset_->Update();
  }

  // What does not fit its field stops the send only when the formula asks for the field.
  void SetValue(TextView field, const CellAddress& cell) {
    const CellValue value = sheet_.Value(cell);
    try {
      recordset_->SetValue(field, value);
    } catch (const RuntimeError& error) {
      const bool asked_for = UpperCase(formula_).find(field) != Text::npos;
      if (IsBlank(value) || !asked_for) return recordset_->SetValue(field, CellValue());
      throw RuntimeError(error.number(), error.description() + u" (" + A1(cell) + u")");
    }
  }

  const AddInContext& context_;
  const SendChoices& choices_;
  Sheet& sheet_;
  std::vector<Text> columns_;
  Text formula_;
  std::unique_ptr<Recordset> recordset_;
};

bool Agrees(const AddInContext& context, const SendChoices& choices, std::int32_t count) {
  const Text question =
      NumberToText(count) + (choices.schedule.wanted
                                 ? Text(u" records has been filtered. Do you want to Set Scheduler?")
                                 : Text(u" records has been filtered. Do you want to SMS?"));
  return context.platform.forms.MsgBox(question, kOkCancel, kTitle) == Answer::kOk;
}

std::vector<std::int32_t> RemainingRows(Recordset& recordset) {
  std::vector<std::int32_t> rows;
  for (; !recordset.Eof(); recordset.MoveNext()) rows.push_back(ToLong(ToText(recordset.Value(kRowField))));
  return rows;
}

}  // namespace

std::vector<Text> ScanFilterColumns(TextView message) {
  constexpr TextView kMasked = u"\u0001\u0001";
  std::vector<Text> columns;
  const std::vector<Text> parts = Split(Replace(message, u"##", kMasked), u"#");
  for (std::size_t i = 1; i + 1 < parts.size(); i += 2) {
    const Text column = UpperCase(Remove(parts[i], u" "));
    const bool known = std::find(columns.begin(), columns.end(), column) != columns.end();
    if (IsColumn(column) && !known) columns.push_back(column);
  }
  return columns;
}

Text RewriteFormula(TextView formula, const std::vector<Text>& columns) {
  Text rewritten;
  for (std::size_t at = 0; at < formula.size(); ++at) {
    const std::size_t end = formula[at] == u'#' ? formula.find(u'#', at + 1) : TextView::npos;
    const Text column = end == TextView::npos ? Text() : UpperCase(formula.substr(at + 1, end - at - 1));
    if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
      rewritten.push_back(formula[at]);
    } else {
      rewritten += FieldOf(column);
      at = end;
    }
  }
  return Replace(rewritten, u"##", u"#");
}

FilteredRows FilterRows(const AddInContext& context, const SendChoices& choices, TextView formula,
                        Sheet& sheet, const std::vector<std::int32_t>& rows) {
  FilterTable table(context, choices, formula, sheet);
  if (!table.Load(rows)) return {SendOutcome::kCancelled, {}};
  Recordset& recordset = table.recordset();
  if (!(recordset.Eof() && recordset.Bof())) recordset.SetFilter(table.formula());
  const std::int32_t count = recordset.RecordCount();
  context.progress.Close();
  if (count == 0) {
    ShowAlert(context.platform.forms, u" 0 Records Selected !!!", kInformation, kTitle);
    return {SendOutcome::kNotSent, {}};
  }
  FilteredRows filtered{SendOutcome::kCancelled, {}};
  if (Agrees(context, choices, count)) {
    recordset.MoveFirst();
    filtered.rows = RemainingRows(recordset);
  }
  recordset.Close();
  return filtered;
}

}  // namespace quorvel
