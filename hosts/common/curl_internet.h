#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <variant>

#include "platform/internet.h"

namespace quorvel {

// The internet by libcurl. Send and OpenUrl perform the whole exchange on a connection of its own and keep
// the answer for Read; an answer that breaks off is read as far as it came, and the next read fails.
// HTTP/1.1, no redirects, no retry. kPreconfigured follows the environment's proxy variables; kProxy goes
// through the named proxy for every host that is not in the bypass list, the local one included. A
// connection's user name, when it has one, is sent to the server with its password by the Basic scheme. A
// connection has to be made within 60 seconds; 300 seconds of silence end an exchange.
class CurlInternet : public Internet {
 public:
  // Asked about once a second while an exchange is under way; true gives it up, and whether it reached the
  // server stays unknown.
  using GiveUp = std::function<bool()>;

  explicit CurlInternet(GiveUp give_up = {});

  Handle Open(const SessionOptions& options) override;
  Handle Connect(Handle session, const ConnectOptions& options) override;
  Handle OpenRequest(Handle connection, const RequestOptions& options) override;  // "POST" only
  bool Send(Handle request, std::string_view headers, std::string_view body) override;
  Handle OpenUrl(Handle session, TextView url, std::uint32_t flags) override;
  Block Read(Handle request, std::size_t size) override;
  void Close(Handle handle) override;

 private:
  struct Session {
    std::string agent;
    Access access = Access::kPreconfigured;
    std::string proxy;
    std::string bypass;
  };

  struct Connection {
    Session session;
    std::string server;
    std::int16_t port = 0;
    std::string user;
    std::string password;
  };

  struct Reply {
    bool came = false;      // an HTTP answer, to the end of its head at least
    bool complete = false;  // to its end
    std::string bytes;
    std::size_t read = 0;
  };

  struct Request {
    Connection connection;
    std::string object;
    Reply reply;
  };

  using Node = std::variant<Session, Connection, Request>;
  class Transfer;

  Handle Keep(Node node);
  template <class T>
  [[nodiscard]] T* Find(Handle handle);

  GiveUp give_up_;
  std::map<Handle, Node> nodes_;
  std::uintptr_t last_handle_ = 0;
};

}  // namespace quorvel
