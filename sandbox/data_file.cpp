#include "sandbox/data_file.h"

#include <algorithm>
#include <cerrno>
#include <concepts>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <system_error>
#include <utility>

#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// Thrown while reading, caught in ParseData.
struct BadData {
  DataError error;
};

// A value together with the place where it stands.
class Node {
 public:
  Node(const Json& value, std::string place) : value_(value), place_(std::move(place)) {}

  [[noreturn]] void Fail(std::string reason) const { throw BadData{{place_, std::move(reason)}}; }

  // Must come first for an object: what it may hold.
  void AllowKeys(std::initializer_list<std::string_view> keys) const {
    if (!value_.is_object()) Fail("must be an object");
    for (const auto& item : value_.items()) {
      if (std::ranges::find(keys, item.key()) == keys.end())
        Fail("has an unknown key \"" + item.key() + "\"");
    }
  }

  // `read` (of a Node) of the value under `key`, or `otherwise` when there is none or it is null.
  template <typename Read, typename T = std::invoke_result_t<Read, const Node&>>
  T Get(const char* key, Read read, T otherwise) const {
    const auto found = value_.find(key);
    return found == value_.end() || found->is_null() ? std::move(otherwise)
                                                     : read(Node(*found, place_ + "/" + key));
  }

  template <typename Read>
  auto Need(const char* key, Read read) const {
    const auto found = value_.find(key);
    if (found == value_.end()) Fail(std::string("lacks \"") + key + "\"");
    return read(Node(*found, place_ + "/" + key));
  }

  // A list, each element by `read`; empty when there is none.
  template <typename Read, typename T = std::invoke_result_t<Read, const Node&>>
  std::vector<T> List(const char* key, Read read) const {
    return Get(
        key,
        [&read](const Node& list) {
          if (!list.value_.is_array()) list.Fail("must be a list");
          std::vector<T> elements;
          elements.reserve(list.value_.size());
          for (const Json& element : list.value_) {
            elements.push_back(read(Node(element, list.place_ + "/" + std::to_string(elements.size()))));
          }
          return elements;
        },
        std::vector<T>());
  }

  std::string Utf8() const {
    if (!value_.is_string()) Fail("must be a text");
    return value_.get<std::string>();
  }

  bool Bool() const {
    if (!value_.is_boolean()) Fail("must be true or false");
    return value_.get<bool>();
  }

  std::int64_t Count() const {
    if (!value_.is_number_unsigned() || value_.get<std::uint64_t>() > std::uint64_t{INT64_MAX}) {
      Fail("must be a whole number, 0 or more");
    }
    return value_.get<std::int64_t>();
  }

 private:
  const Json& value_;
  std::string place_;
};

Text ReadText(const Node& node) {
  return FromUtf8(node.Utf8());
}
bool ReadBool(const Node& node) {
  return node.Bool();
}
std::int64_t ReadCount(const Node& node) {
  return node.Count();
}
std::optional<Text> ReadOptionalText(const Node& node) {
  return ReadText(node);
}

LocalTime ReadTime(const Node& node) {
  const auto time = FromIso(node.Utf8());
  if (!time) node.Fail("must be a moment such as \"2024-01-31T09:05:00\"");
  return *time;
}

Text ReadMode(const Node& node) {
  Text mode = ReadText(node);
  if (mode.size() < 3 || mode[1] != u'-' || mode.find(u',') != Text::npos) {
    node.Fail("must be a letter, \"-\" and a description without \",\"");
  }
  return mode;
}

char16_t ReadModeLetter(const Node& node) {
  const Text letter = ReadText(node);
  if (letter.size() != 1) node.Fail("must be one letter");
  return letter.front();
}

// Whether windows-1252 holds every character of `text`.
bool TravelsPlain(TextView text) {
  return FromWire(ToWire(text)) == text;
}

Template ReadTemplate(const Node& node) {
  node.AllowKeys({"name", "text", "unicode"});
  Template result{node.Need("name", ReadText), node.Need("text", ReadText)};
  result.unicode = node.Get("unicode", ReadBool, !TravelsPlain(result.name) || !TravelsPlain(result.text));
  return result;
}

Report ReadReport(const Node& node) {
  node.AllowKeys({"number", "message", "sender", "submitted", "due", "status", "mode"});
  const LocalTime submitted = node.Need("submitted", ReadTime);
  return {node.Need("number", ReadText),        node.Need("message", ReadText),
          node.Need("sender", ReadText),        submitted,
          node.Get("due", ReadTime, submitted), node.Need("status", ReadText),
          node.Need("mode", ReadModeLetter)};
}

Account ReadAccount(const Node& node) {
  node.AllowKeys({"crn", "host", "user", "password", "blocked", "credit", "senders", "templates", "reports"});
  return {node.Need("crn", ReadText),           node.Need("host", ReadText),
          node.Need("user", ReadText),          node.Need("password", ReadText),
          node.Get("blocked", ReadBool, false), node.Get("credit", ReadCount, std::int64_t{0}),
          node.List("senders", ReadText),       node.List("templates", ReadTemplate),
          node.List("reports", ReadReport)};
}

Message ReadMessage(const Node& node) {
  node.AllowKeys({"number", "text", "email", "due"});
  return {node.Need("number", ReadText), node.Need("text", ReadText), node.Get("email", ReadText, Text()),
          node.Need("due", ReadTime)};
}

std::optional<EmailCopy> ReadEmail(const Node& node) {
  node.AllowKeys({"subject", "from"});
  return EmailCopy{node.Need("subject", ReadText), node.Need("from", ReadText)};
}

Job ReadJob(const Node& node) {
  node.AllowKeys({"id", "user", "path", "sender", "service", "unicode", "wap_url", "scheduled", "title",
                  "notify", "email", "submitted", "messages"});
  Job job;
  job.id = node.Need("id", ReadCount);
  job.user = node.Need("user", ReadText);
  job.path = node.Need("path", [](const Node& path) { return path.Utf8(); });
  job.sender = node.Need("sender", ReadText);
  job.service = node.Get("service", ReadOptionalText, std::optional<Text>());
  job.unicode = node.Need("unicode", ReadBool);
  job.wap_url = node.Get("wap_url", ReadOptionalText, std::optional<Text>());
  job.scheduled = node.Need("scheduled", ReadBool);
  job.title = node.Need("title", ReadText);
  job.notify = node.Need("notify", ReadBool);
  job.email = node.Get("email", ReadEmail, std::optional<EmailCopy>());
  job.submitted = node.Need("submitted", ReadTime);
  job.messages = node.List("messages", ReadMessage);
  return job;
}

Data ReadData(const Node& node) {
  node.AllowKeys({"modes", "accounts", "jobs"});
  Data data{node.List("modes", ReadMode), node.List("accounts", ReadAccount), node.List("jobs", ReadJob)};
  std::set<Text> users;
  for (const Account& account : data.accounts) {
    if (!users.insert(account.user).second)
      node.Fail("has two accounts of user \"" + ToUtf8(account.user) + "\"");
  }
  return data;
}

template <typename T, typename Write>
Json WriteList(const std::vector<T>& values, Write write) {
  Json list = Json::array();
  for (const T& value : values) list.push_back(write(value));
  return list;
}

Json WriteText(const Text& text) {
  return ToUtf8(text);
}
Json WriteOptionalText(const std::optional<Text>& text) {
  return text ? WriteText(*text) : Json();
}

Json WriteTemplate(const Template& value) {
  return {{"name", ToUtf8(value.name)}, {"text", ToUtf8(value.text)}, {"unicode", value.unicode}};
}

Json WriteReport(const Report& report) {
  return {{"number", ToUtf8(report.number)},
          {"message", ToUtf8(report.message)},
          {"sender", ToUtf8(report.sender)},
          {"submitted", ToIso(report.submitted)},
          {"due", ToIso(report.due)},
          {"status", ToUtf8(report.status)},
          {"mode", ToUtf8(Text(1, report.mode))}};
}

Json WriteAccount(const Account& account) {
  return {{"crn", ToUtf8(account.crn)},
          {"host", ToUtf8(account.host)},
          {"user", ToUtf8(account.user)},
          {"password", ToUtf8(account.password)},
          {"blocked", account.blocked},
          {"credit", account.credit},
          {"senders", WriteList(account.senders, WriteText)},
          {"templates", WriteList(account.templates, WriteTemplate)},
          {"reports", WriteList(account.reports, WriteReport)}};
}

Json WriteMessage(const Message& message) {
  Json json = {
      {"number", ToUtf8(message.number)}, {"text", ToUtf8(message.text)}, {"due", ToIso(message.due)}};
  if (!message.email.empty()) json["email"] = ToUtf8(message.email);
  return json;
}

Json WriteEmail(const std::optional<EmailCopy>& email) {
  if (!email) return {};
  return {{"subject", ToUtf8(email->subject)}, {"from", ToUtf8(email->from)}};
}

Json WriteJob(const Job& job) {
  return {{"id", job.id},
          {"user", ToUtf8(job.user)},
          {"path", job.path},
          {"sender", ToUtf8(job.sender)},
          {"service", WriteOptionalText(job.service)},
          {"unicode", job.unicode},
          {"wap_url", WriteOptionalText(job.wap_url)},
          {"scheduled", job.scheduled},
          {"title", ToUtf8(job.title)},
          {"notify", job.notify},
          {"email", WriteEmail(job.email)},
          {"submitted", ToIso(job.submitted)},
          {"messages", WriteList(job.messages, WriteMessage)}};
}

std::string SystemReason() {
  return std::strerror(errno);
}

// Gives the file its permissions before anything is in it: it holds passwords.
std::optional<std::string> WriteFile(const fs::path& file, fs::perms permissions, std::string_view text) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) return SystemReason();
  std::error_code error;
  fs::permissions(file, permissions, error);
  if (error) return error.message();
  out << text;
  out.close();
  if (!out) return SystemReason();
  return std::nullopt;
}

DataError SyntaxError(std::string_view json, const nlohmann::json::parse_error& error) {
  const std::string_view before = json.substr(0, error.byte > 0 ? error.byte - 1 : 0);
  const auto line = std::ranges::count(before, '\n') + 1;
  const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
  const std::string_view what = error.what();
  const std::string_view detail = what.substr(std::min(what.find(": ") + 2, what.size()));
  return {"line " + std::to_string(line) + ", column " + std::to_string(column), std::string(detail)};
}

}  // namespace

std::variant<Data, DataError> ParseData(std::string_view json) {
  try {
    return ReadData(Node(Json::parse(json), ""));
  } catch (const nlohmann::json::parse_error& error) {
    return SyntaxError(json, error);
  } catch (const BadData& bad) {
    return bad.error;
  }
}

std::string DumpData(const Data& data) {
  const Json json = {{"modes", WriteList(data.modes, WriteText)},
                     {"accounts", WriteList(data.accounts, WriteAccount)},
                     {"jobs", WriteList(data.jobs, WriteJob)}};
  return json.dump(2) + "\n";
}

std::variant<Data, DataError> LoadData(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return DataError{"", "cannot be opened: " + SystemReason()};
  const std::string json(std::istreambuf_iterator<char>(in), {});
  if (in.bad()) return DataError{"", "cannot be read: " + SystemReason()};
  return ParseData(json);
}

std::optional<std::string> SaveData(const fs::path& file, const Data& data) {
  std::error_code error;
  const fs::path target = fs::canonical(file, error);
  if (error) return error.message();
  const fs::perms permissions = fs::status(target, error).permissions();
  if (error) return error.message();
  const fs::path fresh = target.string() + ".new";
  if (const auto reason = WriteFile(fresh, permissions, DumpData(data))) {
    fs::remove(fresh, error);
    return "cannot write " + fresh.string() + ": " + *reason;
  }
  fs::rename(fresh, target, error);
  if (error) return error.message();
  return std::nullopt;
}

Data DefaultData() {
  using namespace std::chrono_literals;
  const LocalTime monday = std::chrono::local_days(std::chrono::year(2024) / 1 / 15) + 9h + 30min;
  Account demo;
  demo.crn = u"1001";
  demo.host = u"sms1.quorvel.example";
  demo.user = u"demo";
  demo.password = u"demo";
  demo.credit = 500;
  demo.senders = {u"QUORVEL", u"SHOPIN"};
  demo.templates = {{u"Greeting", u"Hello #B#, thank you for your order."},
                    {u"Reminder", u"Dear #B#, your appointment is on #C#."},
                    {u"Price in \u20ac", u"#B#, today only: 5 \u20ac off \u2013 show this message.", true}};
  demo.reports = {
      {u"919800000001", u"Your code is 4711", u"QUORVEL", monday, monday, u"DELIVERED", u'C'},
      {u"919800000020", u"Stock is low, please call", u"SHOPIN", monday + 1h, monday + 1h, u"FAILED", u'G'}};
  return {{u"L-Spreadsheet AddIn", u"C-Client Portal", u"M-Mobile Client", u"G-Group Portal",
           u"E-Email To SMS", u"R-Reseller Portal", u"B-Bulk Upload", u"A-API", u"H-HTTP Post"},
          {std::move(demo)},
          {}};
}

}  // namespace quorvel::sandbox
