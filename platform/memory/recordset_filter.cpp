#include "platform/memory/recordset_filter.h"

#include <algorithm>
#include <array>
#include <compare>
#include <optional>
#include <string>
#include <utility>

#include "platform/memory/recordset_error.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr int kMaxNesting = 64;
constexpr TextView kBlanks = u" \t\r\n";
constexpr TextView kWordEnds = u" \t\r\n()<>='#[]";
constexpr TextView kWildcards = u"*%";

enum class TokenKind { kEnd, kWord, kBracketedName, kOperator, kOpen, kClose, kText, kDate };

struct Token {
  TokenKind kind = TokenKind::kEnd;
  Text text;
};

RuntimeError Malformed() {
  return MakeError(RecordsetError::kInvalidArgument);
}
RuntimeError WrongType() {
  return MakeError(RecordsetError::kTypeConversion);
}

class FilterLexer {
 public:
  explicit FilterLexer(TextView text) : rest_(text) {}

  // Throws 3001 when a text, a date or a bracket is not closed.
  Token Next() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
    if (rest_.empty()) return {};
    switch (rest_.front()) {
      case u'(':
        return {TokenKind::kOpen, Text(Take(1))};
      case u')':
        return {TokenKind::kClose, Text(Take(1))};
      case u'[':
        return {TokenKind::kBracketedName, Text(Enclosed(u"[", u"]"))};
      case u'#':
        if (rest_.starts_with(u"#'")) return {TokenKind::kText, u'\'' + Text(Enclosed(u"#'", u"'#")) + u'\''};
        return {TokenKind::kDate, Text(Enclosed(u"#", u"#"))};
      case u'\'':
        return {TokenKind::kText, Quoted()};
      case u'<':
      case u'>':
      case u'=':
        return {TokenKind::kOperator, Text(Take(OperatorLength()))};
      default:
        return {TokenKind::kWord, Text(Take(std::max<std::size_t>(1, rest_.find_first_of(kWordEnds))))};
    }
  }

 private:
  TextView Take(std::size_t count) {
    const TextView taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  TextView Enclosed(TextView opening, TextView closing) {
    Take(opening.size());
    const std::size_t end = rest_.find(closing);
    if (end == TextView::npos) throw Malformed();
    const TextView content = Take(end);
    Take(closing.size());
    return content;
  }

  // A doubled quote stands for one.
  Text Quoted() {
    Text text(Enclosed(u"'", u"'"));
    while (rest_.starts_with(u'\'')) text.append(u"'").append(Enclosed(u"'", u"'"));
    return text;
  }

  [[nodiscard]] std::size_t OperatorLength() const {
    const TextView two = rest_.substr(0, 2);
    return two == u"<=" || two == u">=" || two == u"<>" ? 2 : 1;
  }

  TextView rest_;
};

bool IsKeyword(const Token& token, TextView keyword) {
  return token.kind == TokenKind::kWord && UpperCase(token.text) == keyword;
}

// [sign] [$] digits [. digits] [e [sign] digits]
bool IsNumber(TextView word) {
  const auto skip_one_of = [&word](TextView units) {
    const bool found = !word.empty() && units.find(word.front()) != TextView::npos;
    if (found) word.remove_prefix(1);
    return found;
  };
  const auto skip_digits = [&word] {
    const std::size_t count = std::min(word.find_first_not_of(u"0123456789"), word.size());
    word.remove_prefix(count);
    return count;
  };
  skip_one_of(u"+-");
  skip_one_of(u"$");
  std::size_t digits = skip_digits();
  if (skip_one_of(u".")) digits += skip_digits();
  if (digits == 0) return false;
  if (skip_one_of(u"eE")) {
    skip_one_of(u"+-");
    if (skip_digits() == 0) return false;
  }
  return word.empty();
}

bool IsBareName(TextView word) {
  const auto is_letter = [](char16_t unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') || unit == u'_' || unit > 0x7F;
  };
  const auto is_digit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
  return is_letter(word.front()) &&
         std::ranges::all_of(word, [&](char16_t unit) { return is_letter(unit) || is_digit(unit); });
}

enum class ValueKind { kText, kDate, kNumber, kNull };

struct Value {
  ValueKind kind;
  Text text;
};

Value ReadValue(Token token) {
  if (token.kind == TokenKind::kText) return {ValueKind::kText, std::move(token.text)};
  if (token.kind == TokenKind::kDate) return {ValueKind::kDate, std::move(token.text)};
  if (IsKeyword(token, u"NULL")) return {ValueKind::kNull, {}};
  if (token.kind == TokenKind::kWord && IsNumber(token.text))
    return {ValueKind::kNumber, std::move(token.text)};
  throw Malformed();
}

// The outcomes of comparing a field with a value that an operator accepts, as a set.
enum Outcome : unsigned { kLess = 1, kEqual = 2, kGreater = 4 };

struct OrderOperator {
  TextView text;
  unsigned accepts;
};

constexpr std::array<OrderOperator, 6> kOrderOperators{{{u"<", kLess},
                                                        {u">", kGreater},
                                                        {u"<=", kLess | kEqual},
                                                        {u">=", kGreater | kEqual},
                                                        {u"<>", kLess | kGreater},
                                                        {u"=", kEqual}}};

unsigned ReadOperator(const Token& token) {
  const auto* const found = std::ranges::find(kOrderOperators, token.text, &OrderOperator::text);
  if (token.kind != TokenKind::kOperator || found == kOrderOperators.end()) throw Malformed();
  return found->accepts;
}

template <class T>
bool Accepts(unsigned accepts, const T& left, const T& right) {
  if (left < right) return (accepts & kLess) != 0;
  return (accepts & (right < left ? kGreater : kEqual)) != 0;
}

using Test = std::function<bool(const FieldData&)>;

// A test of what the field holds as a T; NULL fails it.
template <class T, class Predicate>
Test NotNull(Predicate predicate) {
  return [predicate = std::move(predicate)](const FieldData& data) {
    const T* const held = std::get_if<T>(&data);
    return held != nullptr && predicate(*held);
  };
}

Test NullTest(unsigned accepts) {
  if (accepts != kEqual && accepts != (kLess | kGreater)) throw Malformed();
  return [wanted = accepts == kEqual](const FieldData& data) {
    return std::holds_alternative<std::monostate>(data) == wanted;
  };
}

Test IntegerTest(unsigned accepts, const Value& value) {
  if (value.kind == ValueKind::kDate) throw WrongType();
  try {
    return NotNull<std::int32_t>([accepts, number = ToDouble(value.text)](std::int32_t held) {
      return Accepts(accepts, static_cast<double>(held), number);
    });
  } catch (const RuntimeError&) {
    throw WrongType();
  }
}

Test TimestampTest(unsigned accepts, const Value& value, Date today) {
  if (value.kind == ValueKind::kNumber) throw WrongType();
  const std::optional<Date> date = ParseDate(value.text, today);
  if (!date) throw WrongType();
  return NotNull<Date>([accepts, seconds = WholeSeconds(*date)](Date held) {
    return Accepts(accepts, WholeSeconds(held), seconds);
  });
}

Test TextTest(unsigned accepts, const Value& value) {
  if (value.kind == ValueKind::kDate) throw WrongType();
  return NotNull<Text>([accepts, upper = UpperCase(value.text)](const Text& held) {
    return Accepts(accepts, UpperCase(held), upper);
  });
}

Test OrderTest(FieldType type, unsigned accepts, const Value& value, Date today) {
  if (value.kind == ValueKind::kNull) return NullTest(accepts);
  if (type == FieldType::kInteger) return IntegerTest(accepts, value);
  if (type == FieldType::kTimestamp) return TimestampTest(accepts, value, today);
  return TextTest(accepts, value);
}

bool IsWildcard(char16_t unit) {
  return kWildcards.find(unit) != TextView::npos;
}

Test LikeTest(FieldType type, const Value& value) {
  if (type != FieldType::kVarChar || value.kind != ValueKind::kText) throw Malformed();
  TextView pattern = value.text;
  const bool open_end = !pattern.empty() && IsWildcard(pattern.back());
  if (open_end) pattern.remove_suffix(1);
  const bool open_start = !pattern.empty() && IsWildcard(pattern.front());
  if (open_start) pattern.remove_prefix(1);
  if (std::ranges::any_of(pattern, IsWildcard) || (open_start && !open_end)) throw Malformed();
  return NotNull<Text>([open_start, open_end, upper = UpperCase(pattern)](const Text& held) {
    if (open_start) return UpperCase(held).find(upper) != Text::npos;
    const bool may_match = open_end || held.size() == upper.size();
    return may_match && UpperCase(TextView(held).substr(0, upper.size())) == upper;
  });
}

}  // namespace

class FilterParser {
 public:
  FilterParser(TextView text, std::span<const FieldDefinition> fields, Date today)
      : lexer_(text), fields_(fields), today_(today), token_(lexer_.Next()) {}

  RecordsetFilter Parse() {
    ParseChain(0);
    if (token_.kind != TokenKind::kEnd) throw Malformed();
    return std::move(filter_);
  }

 private:
  Token Take() { return std::exchange(token_, lexer_.Next()); }

  // operand { AND|OR operand }. Whether it holds an OR, in a group of its own included.
  bool ParseChain(int nesting) {
    bool holds_or = false;
    bool or_group = ParseOperand(nesting);
    while (IsKeyword(token_, u"AND") || IsKeyword(token_, u"OR")) {
      const bool is_or = IsKeyword(Take(), u"OR");
      holds_or = holds_or || is_or;
      const std::size_t skip = filter_.steps_.size();
      filter_.steps_.emplace_back();
      or_group = ParseOperand(nesting) || or_group;
      if (or_group && !is_or) throw Malformed();
      filter_.steps_[skip] = RecordsetFilter::Skip{is_or, filter_.steps_.size()};
    }
    return holds_or || or_group;
  }

  // A clause, or a chain in parentheses. Whether it is a group that holds an OR.
  bool ParseOperand(int nesting) {
    if (token_.kind != TokenKind::kOpen) {
      ParseClause();
      return false;
    }
    if (nesting == kMaxNesting) throw Malformed();
    Take();
    const bool holds_or = ParseChain(nesting + 1);
    if (Take().kind != TokenKind::kClose) throw Malformed();
    return holds_or;
  }

  void ParseClause() {
    const Token name = Take();
    const bool is_name =
        name.kind == TokenKind::kBracketedName || (name.kind == TokenKind::kWord && IsBareName(name.text));
    if (!is_name) throw Malformed();
    const Token comparison = Take();
    const bool like = IsKeyword(comparison, u"LIKE");
    const unsigned accepts = like ? 0 : ReadOperator(comparison);
    const Value value = ReadValue(Take());
    const std::size_t field = FindField(fields_, name.text);
    const FieldType type = fields_[field].type;
    filter_.steps_.emplace_back(RecordsetFilter::Clause{
        field, like ? LikeTest(type, value) : OrderTest(type, accepts, value, today_)});
  }

  FilterLexer lexer_;
  std::span<const FieldDefinition> fields_;
  Date today_;
  Token token_;
  RecordsetFilter filter_;
};

std::size_t FindField(std::span<const FieldDefinition> fields, TextView name) {
  auto found = std::ranges::find(fields, name, &FieldDefinition::name);
  if (found == fields.end()) {
    const auto upper_name = [](const FieldDefinition& field) { return UpperCase(field.name); };
    found = std::ranges::find(fields, UpperCase(name), upper_name);
  }
  if (found == fields.end()) throw MakeError(RecordsetError::kItemNotFound);
  return static_cast<std::size_t>(found - fields.begin());
}

RecordsetFilter RecordsetFilter::Parse(TextView text, std::span<const FieldDefinition> fields, Date today) {
  return FilterParser(text, fields, today).Parse();
}

bool RecordsetFilter::Matches(std::span<const FieldData> record) const {
  bool result = true;
  for (std::size_t step = 0; step < steps_.size();) {
    if (const auto* const skip = std::get_if<Skip>(&steps_[step])) {
      step = result == skip->when ? skip->target : step + 1;
    } else {
      const Clause& clause = std::get<Clause>(steps_[step]);
      result = clause.holds(record[clause.field]);
      ++step;
    }
  }
  return result;
}

}  // namespace quorvel
