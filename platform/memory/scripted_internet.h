#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "platform/internet.h"

namespace quorvel {

// The calls of the interface as values, in the order in which they came.
struct OpenCall {
  std::string agent;
  Internet::Access access = Internet::Access::kPreconfigured;
  Text proxy;
  Text bypass;
  std::uint32_t flags = 0;

  friend bool operator==(const OpenCall&, const OpenCall&) = default;
};

struct ConnectCall {
  Internet::Handle session{};
  Text server;
  std::int16_t port = 0;
  Text user;
  Text password;
  std::uint32_t service = 0;
  std::uint32_t flags = 0;

  friend bool operator==(const ConnectCall&, const ConnectCall&) = default;
};

struct OpenRequestCall {
  Internet::Handle connection{};
  std::string verb;
  std::string object;
  std::string version;
  std::string referrer;
  std::uint32_t flags = 0;

  friend bool operator==(const OpenRequestCall&, const OpenRequestCall&) = default;
};

struct SendCall {
  Internet::Handle request{};
  std::string headers;
  std::string body;

  friend bool operator==(const SendCall&, const SendCall&) = default;
};

struct OpenUrlCall {
  Internet::Handle session{};
  Text url;
  std::uint32_t flags = 0;

  friend bool operator==(const OpenUrlCall&, const OpenUrlCall&) = default;
};

struct ReadCall {
  Internet::Handle request{};
  std::size_t size = 0;

  friend bool operator==(const ReadCall&, const ReadCall&) = default;
};

struct CloseCall {
  Internet::Handle handle{};

  friend bool operator==(const CloseCall&, const CloseCall&) = default;
};

using InternetCall =
    std::variant<OpenCall, ConnectCall, OpenRequestCall, SendCall, OpenUrlCall, ReadCall, CloseCall>;

// A server that answers from a queue, one answer per Send or OpenUrl. Handles count from 1. A request with no
// answer left is std::logic_error naming it: the test did not expect it.
class ScriptedInternet : public Internet {
 public:
  // A request that went out, with the server that it was meant for.
  struct Request {
    Text server;  // empty for OpenUrl
    std::int16_t port = 0;
    std::string object;  // the path or the URL
    std::string headers;
    std::string body;

    friend bool operator==(const Request&, const Request&) = default;
  };

  void Answer(std::string_view bytes) { answers_.push_back({.bytes = std::string(bytes)}); }
  // The bytes come, then a read fails.
  void AnswerCut(std::string_view bytes) { answers_.push_back({.bytes = std::string(bytes), .cut = true}); }
  // Send fails, OpenUrl gives the null handle.
  void NoAnswer() { answers_.push_back({.bytes = {}, .sent = false}); }
  // The reads of later answers give this many bytes at most, whatever they ask for.
  void set_block(std::size_t bytes) { block_ = bytes; }
  // The call of that number, counted from 1 over all calls, fails.
  void FailCall(std::size_t number) { failing_call_ = number; }

  [[nodiscard]] const std::vector<InternetCall>& calls() const { return calls_; }
  [[nodiscard]] const std::vector<Request>& requests() const { return requests_; }
  [[nodiscard]] std::size_t open_handles() const { return open_.size(); }

  Handle Open(const SessionOptions& options) override;
  Handle Connect(Handle session, const ConnectOptions& options) override;
  Handle OpenRequest(Handle connection, const RequestOptions& options) override;
  bool Send(Handle request, std::string_view headers, std::string_view body) override;
  Handle OpenUrl(Handle session, TextView url, std::uint32_t flags) override;
  Block Read(Handle request, std::size_t size) override;
  void Close(Handle handle) override;

 private:
  struct Reply {
    std::string bytes;
    bool cut = false;
    bool sent = true;
  };

  struct Node {
    Text server;
    std::int16_t port = 0;
    std::string object;
    Reply reply;
    std::size_t read = 0;
  };

  // Records the call; false when it is the one that fails.
  bool Record(InternetCall call);
  Handle NewHandle(Node node);
  Reply TakeAnswer(const std::string& object);

  std::vector<InternetCall> calls_;
  std::vector<Request> requests_;
  std::deque<Reply> answers_;
  std::map<Handle, Node> open_;
  std::uintptr_t last_handle_ = 0;
  std::size_t block_ = SIZE_MAX;
  std::size_t failing_call_ = 0;
};

}  // namespace quorvel
