#include "sandbox/reports.h"

#include <algorithm>

#include "sandbox/records.h"
#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

constexpr char16_t kSpreadsheetMode = u'L';
constexpr auto kTimeToDeliver = std::chrono::seconds(30);

std::string Moment(LocalTime time) {
  std::string moment = ToIso(time);
  std::ranges::replace(moment, 'T', ' ');
  return moment;
}

// The description of the mode with that letter; the letter itself when there is none.
Text ModeName(const std::vector<Text>& modes, char16_t letter) {
  const auto found = std::ranges::find(modes, letter, [](const Text& mode) { return mode.front(); });
  return found == modes.end() ? Text(1, letter) : found->substr(2);
}

class ReportWriter {
 public:
  ReportWriter(const std::vector<Text>& modes, const ReportQuery& query) : modes_(modes), query_(query) {}

  [[nodiscard]] bool Wants(char16_t mode, LocalTime submitted) const {
    const auto day = std::chrono::floor<std::chrono::days>(submitted);
    return (query_.mode == 0 || query_.mode == mode) && query_.from <= day && day <= query_.to;
  }

  void Add(const Report& report) {
    if (records_ == 0) list_.Add({"Number", "Message", "Sender", "Submitted", "Due", "Status", "Mode"});
    ++records_;
    list_.Add({ToWire(report.number), ToWire(report.message), ToWire(report.sender), Moment(report.submitted),
               Moment(report.due), ToWire(report.status), ToWire(ModeName(modes_, report.mode))});
  }

  [[nodiscard]] std::string Reply() const { return list_.Reply(); }

 private:
  const std::vector<Text>& modes_;
  const ReportQuery& query_;
  RecordList list_;
  std::size_t records_ = 0;
};

}  // namespace

std::optional<ReportQuery> ReadReportQuery(const Form& form, const std::vector<Text>& modes) {
  const auto from = FromCompactDay(form.Bytes("FromDate").value_or(""));
  const auto to = FromCompactDay(form.Bytes("ToDate").value_or(""));
  const Text mode = form.Value("TOD").value_or(Text());
  if (!from || !to || *from > *to) return std::nullopt;
  if (mode == u"ALL") return ReportQuery{*from, *to, 0};
  const bool known =
      std::ranges::any_of(modes, [&mode](const Text& each) { return each.substr(0, 1) == mode; });
  if (!known) return std::nullopt;
  return ReportQuery{*from, *to, mode.front()};
}

TextView DeliveryStatus(const Message& message, LocalTime now) {
  if (now < message.due) return u"SCHEDULED";
  if (now < message.due + kTimeToDeliver) return u"SUBMITTED";
  return message.number.ends_with(u'0') ? u"FAILED" : u"DELIVERED";
}

std::string ReportReply(const Data& data, const Account& account, const ReportQuery& query, LocalTime now) {
  ReportWriter writer(data.modes, query);
  for (const Report& report : account.reports) {
    if (writer.Wants(report.mode, report.submitted)) writer.Add(report);
  }
  for (const Job& job : data.jobs) {
    if (job.user != account.user || !writer.Wants(kSpreadsheetMode, job.submitted)) continue;
    for (const Message& message : job.messages) {
      writer.Add({message.number, message.text, job.sender, job.submitted, message.due,
                  Text(DeliveryStatus(message, now)), kSpreadsheetMode});
    }
  }
  return writer.Reply();
}

}  // namespace quorvel::sandbox
