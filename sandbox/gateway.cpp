#include "sandbox/gateway.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

#include "sandbox/inspection.h"
#include "sandbox/records.h"
#include "sandbox/reports.h"
#include "sandbox/scheduled_jobs.h"
#include "sandbox/scramble.h"
#include "sandbox/submission.h"
#include "sandbox/templates.h"
#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

constexpr std::string_view kSuccess = "000";
constexpr std::string_view kNoCredit = "001";
constexpr std::string_view kUnknownUser = "002";
constexpr std::string_view kWrongPassword = "003";
constexpr std::string_view kBlockedAtLogin = "004";
constexpr std::string_view kBadParameters = "005";
constexpr std::string_view kBlocked = "0110";

constexpr std::size_t kRecordedBytes = std::size_t{64} * 1024;
constexpr std::size_t kGarbageBytes = 512;
constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;

constexpr std::string_view kScheme = "http://";

// How the account password arrives.
enum class PasswordForm { kNone, kPlain, kScrambled, kEither };

// "/path" of "/path" and "http://host/path", without a query.
std::string_view PathOf(std::string_view target) {
  if (target.starts_with(kScheme)) {
    target.remove_prefix(kScheme.size());
    target.remove_prefix(std::min(target.find('/'), target.size()));
  }
  return target.substr(0, target.find('?'));
}

bool PasswordFits(const Account& account, std::string_view arrived, PasswordForm form) {
  const std::string password = ToWire(account.password);
  const bool plain = form != PasswordForm::kScrambled && arrived == password;
  return plain || (form != PasswordForm::kPlain && UndoScramble(arrived) == password);
}

Answer TextAnswer(int status, std::string text) {
  return {status, "text/plain", std::move(text) + "\n"};
}

void ApplyFault(const Fault& fault, Answer& answer) {
  switch (fault.kind) {
    case FaultKind::kReply:
      answer.body = fault.reply;
      break;
    case FaultKind::kRefuse:
    case FaultKind::kCutBefore:
      answer.delivery = Delivery::kNothing;
      break;
    case FaultKind::kCutInside:
      answer.delivery = Delivery::kHalf;
      break;
    case FaultKind::kCutAfter:
      answer.delivery = Delivery::kThenReset;
      break;
    case FaultKind::kSlow:
      answer.delivery = Delivery::kSlow;
      break;
    case FaultKind::kEmpty:
      answer.body.clear();
      break;
    case FaultKind::kGarbage:
      answer.body = Garbage(kGarbageBytes);
      break;
    case FaultKind::kMegabyte:
      answer.body = Garbage(kMegabyte);
      break;
  }
}

}  // namespace

struct Gateway::Endpoint {
  std::string_view method;
  std::string_view path;
  Operation operation;
  PasswordForm password;
  std::string (Gateway::*handle)(const Call& call);
  bool scheduled = false;  // of sends
};

struct Gateway::Call {
  const Endpoint& endpoint;
  Form form;
  Account* account = nullptr;  // of the user who asks; none where no password is needed
};

const std::vector<Gateway::Endpoint>& Gateway::Endpoints() {
  static const std::vector<Endpoint> endpoints = {
      {"POST", "/Tools/Excel_Plugin/ValidateCRN.asp", Operation::kValidateCrn, PasswordForm::kNone,
       &Gateway::ValidateCrn},
      {"POST", "/Tools/Excel_Plugin/LoginCheck.asp", Operation::kLogin, PasswordForm::kPlain,
       &Gateway::LoginCheck},
      {"POST", "/Merrow/Get_Balance.asp", Operation::kBalance, PasswordForm::kScrambled, &Gateway::Balance},
      {"GET", "/Merrow/Get_Modes.asp", Operation::kModes, PasswordForm::kNone, &Gateway::Modes},
      {"POST", "/Merrow/Get_DR.asp", Operation::kReports, PasswordForm::kScrambled, &Gateway::Reports},
      {"POST", "/Tools/Excel_Plugin/SaveUserMessageExcel07.asp", Operation::kTemplates, PasswordForm::kPlain,
       &Gateway::Templates},
      {"POST", "/Merrow/getScheduledData_Excel.asp", Operation::kJobs, PasswordForm::kScrambled,
       &Gateway::ScheduledJobs},
      {"POST", "/Merrow/EditDeleteScheduler.asp", Operation::kJobs, PasswordForm::kScrambled,
       &Gateway::EditScheduledJobs},
      {"POST", "/Tools/Excel_Plugin/SaveBulkSMS.aspx", Operation::kSend, PasswordForm::kPlain,
       &Gateway::Send},
      {"POST", "/Merrow_1/SaveBulkSMS.aspx", Operation::kSend, PasswordForm::kScrambled, &Gateway::Send},
      {"POST", "/Merrow/SaveExcelData_V2.asp", Operation::kSend, PasswordForm::kScrambled, &Gateway::Send},
      {"POST", "/Merrow/SaveSchedulerData_Excel_Dynamic.asp", Operation::kSend, PasswordForm::kPlain,
       &Gateway::Send, true},
      // Large scheduled jobs of every kind of send meet here, and not all of them scramble.
      {"POST", "/Merrow_1/SaveSchedulerData_Excel.aspx", Operation::kSend, PasswordForm::kEither,
       &Gateway::Send, true},
      {"POST", "/Merrow/SaveSchedulerData_Excel.asp", Operation::kSend, PasswordForm::kScrambled,
       &Gateway::Send, true},
  };
  return endpoints;
}

Gateway::Gateway(Data data, FaultRules faults, Surroundings surroundings)
    : data_(std::move(data)), faults_(faults), surroundings_(std::move(surroundings)) {
  for (const Account& account : data_.accounts) initial_credit_.push_back(account.credit);
  for (const Job& job : data_.jobs) next_job_id_ = std::max(next_job_id_, job.id + 1);
}

Answer Gateway::Handle(Request request) {
  const std::lock_guard lock(mutex_);
  const std::string path(PathOf(request.target));
  if (path.starts_with("/_sandbox/")) return Inspect(request, path);

  const auto& endpoints = Endpoints();
  const auto endpoint = std::ranges::find(endpoints, path, &Endpoint::path);
  const bool truncated = request.body.size() > kRecordedBytes;
  requests_.push_back(
      {{request.method, request.target, request.host, request.body.substr(0, kRecordedBytes)}, truncated});
  if (endpoint == endpoints.end()) return TextAnswer(404, "no such page");
  if (endpoint->method != request.method)
    return TextAnswer(405, "this page takes " + std::string(endpoint->method));
  return HandleEndpoint(*endpoint, request);
}

Answer Gateway::HandleEndpoint(const Endpoint& endpoint, const Request& request) {
  Answer answer;
  const std::optional<Fault>& fault = faults_.For(endpoint.operation);
  const bool handled = !fault || (fault->kind != FaultKind::kReply && fault->kind != FaultKind::kRefuse);
  if (handled) answer.body = Dispatch(endpoint, request.body);
  if (fault) ApplyFault(*fault, answer);
  return answer;
}

std::string Gateway::Dispatch(const Endpoint& endpoint, const std::string& body) {
  Call call{endpoint, Form(body)};
  if (endpoint.password != PasswordForm::kNone) {
    std::string refusal = Authenticate(call);
    if (!refusal.empty()) return refusal;
  }
  return (this->*endpoint.handle)(call);
}

// Finds the account that `call` is for; the result is the code that refuses it, or nothing.
std::string Gateway::Authenticate(Call& call) {
  const auto user = call.form.Value("user");
  const auto password = call.form.Bytes("passwd");
  if (!user || !password) return Error("user or passwd is missing");
  const auto account = std::ranges::find(data_.accounts, *user, &Account::user);
  if (account == data_.accounts.end()) return std::string(kUnknownUser);
  if (!PasswordFits(*account, *password, call.endpoint.password)) return std::string(kWrongPassword);
  if (account->blocked) {
    return std::string(call.endpoint.operation == Operation::kLogin ? kBlockedAtLogin : kBlocked);
  }
  call.account = &*account;
  return {};
}

std::string Gateway::ValidateCrn(const Call& call) {
  const Text crn = call.form.Value("CRN").value_or(Text());
  const auto account = std::ranges::find(data_.accounts, Trim(crn), &Account::crn);
  return account == data_.accounts.end() ? "[Invalid]" : "[Success]" + ToWire(account->host);
}

std::string Gateway::LoginCheck(const Call& call) {
  return std::string(call.account->credit > 0 ? kSuccess : kNoCredit);
}

std::string Gateway::Balance(const Call& call) {
  return Envelope(std::to_string(call.account->credit));
}

std::string Gateway::Modes(const Call& /*call*/) {
  std::string list;
  for (const Text& mode : data_.modes) list += (list.empty() ? "" : ",") + ToWire(mode);
  return Envelope(list);
}

std::string Gateway::Send(const Call& call) {
  auto outcome = ReadSubmission(call.form, call.endpoint.scheduled, surroundings_.now());
  if (const auto* refusal = std::get_if<Refusal>(&outcome)) return Error(refusal->reason);
  Job& job = std::get<Job>(outcome);
  Account& account = *call.account;
  const std::int64_t cost = Cost(job.messages, job.unicode);
  if (cost > account.credit) return std::string(kNoCredit);

  job.id = next_job_id_++;
  job.user = account.user;
  job.path = call.endpoint.path;
  job.request = requests_.size() - 1;
  account.credit -= cost;
  data_.jobs.push_back(std::move(job));
  const bool kept = Commit([&] {
    data_.jobs.pop_back();
    account.credit += cost;
  });
  return kept ? std::string(kSuccess) : Error("the job could not be kept");
}

std::string Gateway::Templates(const Call& call) {
  if (call.form.Raw("getMsg") == "Yes") return PullReply(*call.account);
  std::vector<Template>& templates = call.account->templates;
  const std::vector<Template> before = templates;
  const bool deletes = call.form.Raw("delete") == "Y";
  TemplateAnswer answer = deletes ? DeleteTemplate(call.form, templates) : SaveTemplate(call.form, templates);
  if (answer.changed && !Commit([&] { templates = before; })) return Error("the templates could not be kept");
  return std::move(answer.sentence);
}

std::string Gateway::Reports(const Call& call) {
  const auto query = ReadReportQuery(call.form, data_.modes);
  if (!query) return std::string(kBadParameters);
  return ReportReply(data_, *call.account, *query, surroundings_.now());
}

std::string Gateway::ScheduledJobs(const Call& call) {
  return ScheduledReply(data_.jobs, call.account->user, surroundings_.now());
}

std::string Gateway::EditScheduledJobs(const Call& call) {
  const LocalTime now = surroundings_.now();
  Account& account = *call.account;
  const auto ids = call.form.Bytes("schIDs");
  if (!ids) return Error("schIDs is missing");
  const auto jobs_before = data_.jobs;
  const auto credit_before = account.credit;
  const auto jobs = FindWaiting(data_.jobs, *ids, account.user, now);
  if (!jobs) return Error("schIDs names a job that is not waiting");

  if (const auto minutes = call.form.Bytes("newDateTimeMin")) {
    std::int32_t wait = 0;
    const char* const end = minutes->data() + minutes->size();
    const auto [stop, error] = std::from_chars(minutes->data(), end, wait);
    if (error != std::errc() || stop != end || wait < 0)
      return Error("newDateTimeMin is no number of minutes");
    for (Job* job : *jobs) RetimeWaiting(*job, now, now + std::chrono::minutes(wait));
  } else {
    // Messages that were not sent are not paid for.
    for (Job* job : *jobs) account.credit += CancelWaiting(*job, now);
    std::erase_if(data_.jobs, [](const Job& job) { return job.messages.empty(); });
  }
  const bool kept = Commit([&] {
    data_.jobs = jobs_before;
    account.credit = credit_before;
  });
  return kept ? std::string(kSuccess) : Error("the jobs could not be kept");
}

Answer Gateway::Inspect(const Request& request, std::string_view path) {
  const std::string what = request.method + " " + std::string(path);
  if (what == "GET /_sandbox/messages") return {200, "application/json", ReceivedJson(data_.jobs, requests_)};
  if (what == "GET /_sandbox/credit") return CreditByUser();
  if (what == "POST /_sandbox/reset") return Reset();
  if (what == "POST /_sandbox/fail") return ReplaceFaults(request.body);
  return TextAnswer(404, "no such page");
}

Answer Gateway::CreditByUser() const {
  nlohmann::ordered_json credit = nlohmann::ordered_json::object();
  for (const Account& account : data_.accounts) credit[ToUtf8(account.user)] = account.credit;
  return {200, "application/json", credit.dump() + "\n"};
}

Answer Gateway::Reset() {
  requests_.clear();
  data_.jobs.clear();
  for (std::size_t i = 0; i < data_.accounts.size(); ++i) data_.accounts[i].credit = initial_credit_[i];
  const bool kept = Commit([] {});
  return kept ? TextAnswer(200, "reset") : TextAnswer(500, "reset, but the data file could not be written");
}

Answer Gateway::ReplaceFaults(std::string_view rules) {
  FaultRules fresh;
  while (!rules.empty()) {
    std::string_view line = rules.substr(0, rules.find('\n'));
    rules.remove_prefix(std::min(line.size() + 1, rules.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty()) continue;
    if (const auto complaint = fresh.Add(line)) return TextAnswer(400, *complaint);
  }
  faults_ = fresh;
  return TextAnswer(200, "rules replaced");
}

bool Gateway::Commit(const std::function<void()>& undo) {
  if (!surroundings_.save) return true;
  const auto reason = surroundings_.save(data_);
  if (!reason) return true;
  surroundings_.log("the data file could not be written: " + *reason);
  undo();
  return false;
}

std::string Gateway::Error(std::string_view reason) const {
  surroundings_.log("request refused: " + std::string(reason));
  return "<ERROR>";
}

}  // namespace quorvel::sandbox
