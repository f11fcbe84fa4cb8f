#pragma once

#include <string>

#include "platform/internet.h"

namespace quorvel {

// Forwards every call and remembers how the last answer began, for commands whose form shows nothing of it.
class WatchedInternet : public Internet {
 public:
  explicit WatchedInternet(Internet& target) : target_(target) {}

  // Long enough to tell every result code; empty when no answer came.
  [[nodiscard]] const std::string& last_answer() const { return last_answer_; }

  Handle Open(const SessionOptions& options) override { return target_.Open(options); }
  Handle Connect(Handle session, const ConnectOptions& options) override {
    return target_.Connect(session, options);
  }
  Handle OpenRequest(Handle connection, const RequestOptions& options) override {
    return target_.OpenRequest(connection, options);
  }
  bool Send(Handle request, std::string_view headers, std::string_view body) override;
  Handle OpenUrl(Handle session, TextView url, std::uint32_t flags) override;
  Block Read(Handle request, std::size_t size) override;
  void Close(Handle handle) override { target_.Close(handle); }

 private:
  Internet& target_;
  std::string last_answer_;
};

}  // namespace quorvel
