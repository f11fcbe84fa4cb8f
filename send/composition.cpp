#include "send/composition.h"

#include <utility>

#include "addin/common/alert.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u" S M S ";
constexpr std::size_t kLongestEmailColumn = 3;
// A group's whole text is one cell of the template that consists of this column.
constexpr char16_t kGroupColumn = u'A';

bool IsSeparator(char16_t unit) {
  return unit == u'.' || unit == u'-' || unit == u' ';
}

// "the row(12). "
Text WithRow(TextView before, std::int32_t row, TextView after) {
  return Text(before) + NumberToText(row) + Text(after);
}

}  // namespace

Composer::Composer(const AddInContext& context, PreviewState& preview, const SendChoices& choices,
                   const SendRules& rules, Sheet& sheet)
    : context_(context),
      preview_(preview),
      choices_(choices),
      rules_(rules),
      sheet_(sheet),
      schedule_(context.platform.forms, context.platform.clock, choices.schedule.date_column) {
  context_.progress.Show(u"Please wait - Selecting Columns...");
  for (const char16_t column : ScanPlaceholders(choices_.message)) cells_.push_back({column, {}});
  composition_.message = choices_.grouping.wanted ? Text{u'#', kGroupColumn, u'#'} : choices_.message;
  preview_.PreviewMessages.clear();
  preview_.PreviewMobileNumbers.clear();
}

Composer::Stop Composer::Walk(const std::vector<std::int32_t>& rows) {
  context_.progress.CancelRequested = false;
  context_.progress.Show(u"Please wait - sending SMS messages");
  for (const std::int32_t row : rows) {
    context_.progress.Step(u"Send SMS\r\nPlease wait - Processing Record No. ", row);
    if (context_.progress.CancelRequested) return SendOutcome::kCancelled;
    try {
      if (const Stop stop = WalkRow(row)) return stop;
    } catch (const RuntimeError& error) {
      throw RuntimeError(error.number(), WithRow(error.description() + u" (row ", row, u")"));
    }
  }
  if (const Stop stop = AddGroups()) return stop;
  std::string& cell_data = composition_.cell_data;
  if (!cell_data.empty()) cell_data.pop_back();
  composition_.numbers.ForgetIndexes();
  return std::nullopt;
}

Composer::Stop Composer::WalkRow(std::int32_t row) {
  Text number = MobileNumber(row);
  if (number.empty()) return std::nullopt;
  if (choices_.grouping.wanted && group_of_number_.contains(number)) {
    AddToGroup(row, number);
    return std::nullopt;
  }
  if (choices_.ignore_duplicates && composition_.numbers.Contains(number)) return std::nullopt;
  composition_.numbers.Add(number);
  if (choices_.grouping.wanted) {
    AddToGroup(row, number);
    return std::nullopt;
  }
  ReadCells(row);
  return Add({row, std::move(number), Personalise(choices_.message, cells_)}, cells_);
}

Text Composer::MobileNumber(std::int32_t row) {
  Text number = ToText(sheet_.Value({choices_.number_column, row}));
  const CountryCode& country = choices_.country_code;
  if (country.wanted && country.national_length > 0 && number.size() == country.national_length)
    number.insert(0, country.code);
  std::erase_if(number, IsSeparator);
  if (rules_.numeric_numbers && !IsNumeric(TextView(number))) return {};
  return number;
}

void Composer::ReadCells(std::int32_t row) {
  for (CellText& cell : cells_) cell.text = sheet_.CellText({TextView(&cell.column, 1), row});
}

void Composer::AddToGroup(std::int32_t row, const Text& number) {
  ReadCells(row);
  const Text text = Personalise(choices_.message, cells_);
  const auto [entry, added] = group_of_number_.try_emplace(number, groups_.size());
  if (added) groups_.push_back({row, number, choices_.grouping.header});
  Text& group = groups_[entry->second].text;
  const bool first_line = added && choices_.grouping.header.empty();
  if (!first_line) group += kCrLf;
  group += text;
}

Composer::Stop Composer::AddGroups() {
  for (Message& group : groups_) {
    if (!choices_.grouping.footer.empty()) group.text += Text(kCrLf) + choices_.grouping.footer;
    if (const Stop stop = Add(group, {{kGroupColumn, group.text}})) return stop;
  }
  return std::nullopt;
}

Composer::Stop Composer::Add(const Message& message, const std::vector<CellText>& cells) {
  AppendCellData(cells);
  AppendEmail(message.row);
  // A Unicode job cannot wait, whatever its rows' dates are.
  const bool scheduled = choices_.schedule.wanted && rules_.layout != Layout::kUnicode;
  if (scheduled && !choices_.schedule.date_column.empty()) {
    const auto minutes = schedule_.Minutes(sheet_, message.row);
    if (!minutes) return SendOutcome::kNotSent;
    composition_.minutes += u"," + NumberToText(*minutes);
  }
  ++composition_.count;
  if (const Stop stop = CheckLength(message)) return stop;
  if (choices_.preview) {
    preview_.PreviewMobileNumbers.push_back(message.number);
    preview_.PreviewMessages.push_back(message.text);
  }
  return std::nullopt;
}

void Composer::AppendCellData(const std::vector<CellText>& cells) {
  if (cells.empty()) return;
  composition_.cell_data += context_.gateway.UrlEncode(RowCellData(cells, rules_.hex));
  composition_.cell_data.push_back(kRowMark);
}

void Composer::AppendEmail(std::int32_t row) {
  if (!choices_.email.wanted) return;
  const Text& column = choices_.email.column;
  if (composition_.count > 0) composition_.emails.push_back(u',');
  composition_.emails +=
      column.size() <= kLongestEmailColumn ? ToText(sheet_.Value({column, row})) : Text(u" ");
}

Composer::Stop Composer::CheckLength(const Message& message) {
  Forms& forms = context_.platform.forms;
  if (message.text.size() > rules_.longest_single && !composition_.long_consent) {
    const Text question =
        WithRow(rules_.long_message, message.row, u"). ") + Text(kCrLf) + Text(rules_.long_question);
    if (forms.MsgBox(question, kOkCancel, rules_.question_title) != Answer::kOk)
      return SendOutcome::kCancelled;
    composition_.long_consent = true;
  }
  if (Trim(message.text).empty()) {
    ShowAlert(forms, WithRow(u"SMS message is empty for the row(", message.row, u")"), kInformation, kTitle);
    return SendOutcome::kNotSent;
  }
  return std::nullopt;
}

}  // namespace quorvel
