#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sandbox/data.h"
#include "sandbox/faults.h"
#include "sandbox/form.h"

namespace quorvel::sandbox {

struct Request {
  std::string method;
  std::string target;  // "/path", or "http://host/path" as a proxy gets it
  std::string host;
  std::string body;
};

// How much of an answer reaches the client.
enum class Delivery {
  kWhole,
  kNothing,    // the connection is closed without a byte
  kHalf,       // closed after half of the body
  kThenReset,  // reset after the last byte
  kSlow,       // the body's bytes one by one
};

struct Answer {
  int status = 200;
  std::string content_type = "text/html";
  std::string body;
  Delivery delivery = Delivery::kWhole;
};

// A request as it came, its body cut at 64 KB.
struct RecordedRequest {
  Request request;
  bool truncated = false;
};

// What the gateway asks of its surroundings.
struct Surroundings {
  std::function<LocalTime()> now;
  // Keeps the data over a restart; the result is the reason when that failed. Empty: nothing is kept.
  std::function<std::optional<std::string>(const Data&)> save;
  std::function<void(std::string_view)> log;
};

// The whole gateway without its sockets: a request in, an answer out. Any thread may call it.
//
// Beside the gateway's own pages it answers
//   GET  /_sandbox/messages  what was received, as JSON: {"messages": [...], "requests": [...]}
//   GET  /_sandbox/credit    credit by user, as JSON
//   POST /_sandbox/reset     forgets messages and requests, restores the credit of the start
//   POST /_sandbox/fail      replaces the fault rules by those in the body, one a line
class Gateway {
 public:
  Gateway(Data data, FaultRules faults, Surroundings surroundings);

  [[nodiscard]] Answer Handle(Request request);

 private:
  struct Call;
  struct Endpoint;
  static const std::vector<Endpoint>& Endpoints();

  [[nodiscard]] Answer HandleEndpoint(const Endpoint& endpoint, const Request& request);
  [[nodiscard]] std::string Dispatch(const Endpoint& endpoint, const std::string& body);
  [[nodiscard]] std::string Authenticate(Call& call);

  [[nodiscard]] std::string ValidateCrn(const Call& call);
  [[nodiscard]] std::string LoginCheck(const Call& call);
  [[nodiscard]] std::string Balance(const Call& call);
  [[nodiscard]] std::string Modes(const Call& call);
  [[nodiscard]] std::string Send(const Call& call);
  [[nodiscard]] std::string Templates(const Call& call);
  [[nodiscard]] std::string Reports(const Call& call);
  [[nodiscard]] std::string ScheduledJobs(const Call& call);
  [[nodiscard]] std::string EditScheduledJobs(const Call& call);

  [[nodiscard]] Answer Inspect(const Request& request, std::string_view path);
  [[nodiscard]] Answer CreditByUser() const;
  [[nodiscard]] Answer Reset();
  [[nodiscard]] Answer ReplaceFaults(std::string_view rules);

  // Saves the data; when that fails, logs the reason, takes the change back by `undo` and answers false.
  [[nodiscard]] bool Commit(const std::function<void()>& undo);
  [[nodiscard]] std::string Error(std::string_view reason) const;

  std::mutex mutex_;
  Data data_;
  std::vector<std::int64_t> initial_credit_;  // by account
  FaultRules faults_;
  Surroundings surroundings_;
  std::vector<RecordedRequest> requests_;
  std::int64_t next_job_id_ = 1;
};

}  // namespace quorvel::sandbox
