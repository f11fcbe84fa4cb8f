#include "sandbox/inspection.h"

#include <nlohmann/json.hpp>

namespace quorvel::sandbox {
namespace {

using Json = nlohmann::ordered_json;

Json OptionalText(const std::optional<Text>& text) {
  return text ? Json(ToUtf8(*text)) : Json();
}

// Each byte as the character of the same code.
std::string Latin1(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  for (const char byte : bytes) text.push_back(static_cast<unsigned char>(byte));
  return ToUtf8(text);
}

// What the messages of `job` have in common.
Json JobJson(const Job& job) {
  return {{"sender", ToUtf8(job.sender)},
          {"tos", OptionalText(job.service)},
          {"wap_url", OptionalText(job.wap_url)},
          {"unicode", job.unicode},
          {"submitted", ToIso(job.submitted)},
          {"scheduled", job.scheduled},
          {"title", ToUtf8(job.title)},
          {"notify", job.notify},
          {"user", ToUtf8(job.user)},
          {"path", job.path},
          {"job", job.id},
          {"request", job.request ? Json(*job.request) : Json()}};
}

Json EmailJson(const Job& job, const Message& message) {
  if (!job.email) return {};
  return {{"to", ToUtf8(message.email)},
          {"subject", ToUtf8(job.email->subject)},
          {"from", ToUtf8(job.email->from)}};
}

Json RequestJson(const RecordedRequest& recorded) {
  const Request& request = recorded.request;
  Json json = {{"method", Latin1(request.method)},
               {"target", Latin1(request.target)},
               {"host", Latin1(request.host)},
               {"body", Latin1(request.body)}};
  if (recorded.truncated) json["truncated"] = true;
  return json;
}

}  // namespace

// Written element by element: a tree of a million messages would need gigabytes.
std::string ReceivedJson(const std::vector<Job>& jobs, const std::vector<RecordedRequest>& requests) {
  std::string json = "{\"messages\":[";
  const char* separator = "\n";
  for (const Job& job : jobs) {
    // The job's share is written once and stands behind each message's own.
    std::string common = JobJson(job).dump();
    common.front() = ',';
    for (const Message& message : job.messages) {
      const Json own = {{"number", ToUtf8(message.number)},
                        {"text", ToUtf8(message.text)},
                        {"due", ToIso(message.due)},
                        {"email", EmailJson(job, message)}};
      json += separator + own.dump();
      json.pop_back();
      json += common;
      separator = ",\n";
    }
  }
  json += "],\n\"requests\":[";
  separator = "\n";
  for (const RecordedRequest& request : requests) {
    json += separator + RequestJson(request).dump();
    separator = ",\n";
  }
  return json + "]}\n";
}

}  // namespace quorvel::sandbox
