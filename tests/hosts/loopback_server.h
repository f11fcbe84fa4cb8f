#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quorvel {

// A raw HTTP server on loopback that takes one request per connection, answers the n-th with the n-th of its
// byte strings, the last one from then on, and closes the connection.
class LoopbackServer {
 public:
  // In place of an answer: the connection stays open and silent as long as the server.
  static constexpr const char* kSilence = "silence";

  explicit LoopbackServer(std::vector<std::string> answers);
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;
  ~LoopbackServer();

  // Below 32768.
  [[nodiscard]] std::int16_t port() const { return port_; }
  // The requests so far, head and body; a connection that closed without one is an empty text.
  [[nodiscard]] std::vector<std::string> requests() const;
  // Returns when that many requests have come.
  void WaitForRequests(std::size_t count);

 private:
  void Serve();

  std::vector<std::string> answers_;
  int listener_ = -1;
  std::int16_t port_ = 0;
  mutable std::mutex mutex_;
  std::condition_variable came_;
  std::vector<std::string> requests_;
  std::vector<int> silent_;
  std::thread thread_;
};

// A socket that is bound to a free loopback port below 32768, not listening.
struct BoundSocket {
  int descriptor = -1;
  std::int16_t port = 0;
};
[[nodiscard]] BoundSocket BindLoopback();

// "HTTP/1.1 200 OK", the length, and `body`.
[[nodiscard]] std::string HttpAnswer(const std::string& body);
// What follows a request's head.
[[nodiscard]] std::string BodyOf(const std::string& request);

}  // namespace quorvel
