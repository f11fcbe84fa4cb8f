#include "sandbox/submission.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <string_view>
#include <utility>

#include "sandbox/merge.h"
#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

constexpr char kRowSeparator = 127;

constexpr std::array<TextView, 6> kServices = {u"11", u"31", u"46", u"44", u"N", u"FLASH"};
constexpr TextView kWapPush = u"31";

// The pieces of `list` between separators; one empty piece for an empty list.
template <typename Char>
std::vector<std::basic_string_view<Char>> Pieces(std::basic_string_view<Char> list, Char separator) {
  std::vector<std::basic_string_view<Char>> pieces;
  for (std::size_t start = 0;;) {
    const std::size_t end = list.find(separator, start);
    pieces.push_back(list.substr(start, end - start));
    if (end == std::basic_string_view<Char>::npos) return pieces;
    start = end + 1;
  }
}

std::optional<Text> PlainText(std::string_view bytes) {
  return FromWire(bytes);
}

std::optional<std::int32_t> WholeNumber(std::string_view text) {
  std::int32_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

// Reads a submission step by step. Each step fills its share of the job and answers whether to go on.
class Reader {
 public:
  Reader(const Form& form, LocalTime now)
      : form_(form),
        unicode_(form.Raw("isUnicodeSubmit") == "1"),
        read_text_(unicode_ ? FromHexText : PlainText) {
    job_.unicode = unicode_;
    job_.submitted = now;
  }

  std::variant<Job, Refusal> Read(bool scheduled) {
    if (Numbers() && Options() && Texts() && Email() && (!scheduled || Schedule())) return std::move(job_);
    return Refusal{std::move(reason_)};
  }

 private:
  bool Refuse(std::string reason) {
    reason_ = std::move(reason);
    return false;
  }

  bool Numbers() {
    // The list travels unencoded, so a "+" in it is a plus sign.
    const auto raw = form_.Raw("mobilenumber");
    if (!raw) return Refuse("mobilenumber is missing");
    const std::string list = PercentDecode(*raw);
    for (const std::string_view number : Pieces(std::string_view(list), ',')) {
      if (number.empty()) return Refuse("mobilenumber holds an empty number");
      job_.messages.push_back({FromWire(number), {}, {}, job_.submitted});
    }
    return true;
  }

  bool Options() {
    const auto sender = form_.Value("SenderName");
    if (!sender) return Refuse("SenderName is missing");
    job_.sender = *sender;
    job_.service = form_.Value("TOS");
    if (job_.service && std::ranges::find(kServices, *job_.service) == kServices.end()) {
      return Refuse("TOS is unknown");
    }
    job_.wap_url = form_.Value("WAP_URL");
    if (job_.service == kWapPush && !job_.wap_url) return Refuse("WAP_URL is missing");
    return true;
  }

  bool Texts() {
    const auto message = form_.Bytes("message");
    if (!message) return Refuse("message is missing");
    const auto text = read_text_(*message);
    if (!text) return Refuse("message is not hex text");
    const auto cells = form_.Raw("MMCellData");
    if (!cells) return Refuse("MMCellData is missing");

    // A client stands in these for angle brackets in long jobs.
    const MergeTemplate merge(Replace(Replace(*text, u"|SMSC_LT|", u"<"), u"|SMSC_GT|", u">"));
    if (cells->empty() && !merge.HasPlaceholders()) {
      for (Message& each : job_.messages) each.text = merge.Merge({});
      return true;
    }
    // The separators travel raw and the rest encoded: they are found before anything is decoded.
    const auto rows = Pieces(*cells, kRowSeparator);
    if (rows.size() != job_.messages.size()) {
      return Refuse("MMCellData has " + std::to_string(rows.size()) + " rows for " +
                    std::to_string(job_.messages.size()) + " numbers");
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto values = ReadRow(rows[i], read_text_);
      if (!values) return Refuse("MMCellData row " + std::to_string(i + 1) + " is malformed");
      job_.messages[i].text = merge.Merge(*values);
    }
    return true;
  }

  bool Email() {
    if (form_.Raw("sendEmail") != "1") return true;
    const auto subject_bytes = form_.Bytes("EmailSubject");
    const auto addresses = form_.Value("EmailAdresses");
    const auto from = form_.Value("FromEmailID");
    if (!subject_bytes || !addresses || !from || !form_.Raw("FromEmailPwd")) {
      return Refuse("a parameter of the e-mail copy is missing");
    }
    const auto subject = read_text_(*subject_bytes);
    if (!subject) return Refuse("EmailSubject is not hex text");
    const auto pieces = Pieces(TextView(*addresses), u',');
    if (pieces.size() != job_.messages.size()) {
      return Refuse("EmailAdresses has " + std::to_string(pieces.size()) + " entries for " +
                    std::to_string(job_.messages.size()) + " numbers");
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) job_.messages[i].email = Trim(pieces[i]);
    job_.email = EmailCopy{*subject, *from};
    return true;
  }

  bool Schedule() {
    const auto title = form_.Value("schedulerName");
    if (!title) return Refuse("schedulerName is missing");
    const auto minutes = form_.Bytes("ScheduledAfterMinutes");
    if (!minutes || minutes->empty()) return Refuse("ScheduledAfterMinutes is missing or empty");
    const auto pieces = Pieces(std::string_view(*minutes), ',');
    if (pieces.size() != 1 && pieces.size() != job_.messages.size()) {
      return Refuse("ScheduledAfterMinutes has " + std::to_string(pieces.size()) + " values for " +
                    std::to_string(job_.messages.size()) + " numbers");
    }
    for (std::size_t i = 0; i < job_.messages.size(); ++i) {
      const auto wait = WholeNumber(pieces[pieces.size() == 1 ? 0 : i]);
      if (!wait) return Refuse("ScheduledAfterMinutes holds something that is no whole number");
      // A date that has passed is sent at once.
      job_.messages[i].due = job_.submitted + std::chrono::minutes(std::max(*wait, 0));
    }
    job_.scheduled = true;
    job_.title = *title;
    job_.notify = form_.Raw("NotifyMe") == "1";
    return true;
  }

  const Form& form_;
  bool unicode_;
  ValueReader read_text_;
  Job job_;
  std::string reason_;
};

}  // namespace

std::variant<Job, Refusal> ReadSubmission(const Form& form, bool scheduled, LocalTime now) {
  return Reader(form, now).Read(scheduled);
}

std::int64_t Cost(const std::vector<Message>& messages, bool unicode) {
  return std::accumulate(messages.begin(), messages.end(), std::int64_t{0},
                         [unicode](std::int64_t sum, const Message& message) {
                           return sum + SmsCount(message.text.size(), unicode);
                         });
}

}  // namespace quorvel::sandbox
