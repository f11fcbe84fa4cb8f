#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/signal_set.hpp>
#include <chrono>
#include <initializer_list>
#include <list>
#include <memory>

#include "sandbox/gateway.h"

namespace quorvel::sandbox {

// The gateway on 127.0.0.1: as an origin server and, for absolute targets, as the proxy that leads to it.
// Each connection has its own thread.
class HttpServer {
 public:
  // Listens from now on. With port 0 it picks a free one below 32768, which a signed 16-bit number holds.
  // Throws boost::system::system_error when it cannot listen. `gateway` must outlive the server.
  HttpServer(Gateway& gateway, unsigned short port,
             std::chrono::milliseconds pause_between_slow_bytes = std::chrono::milliseconds(20));
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  [[nodiscard]] unsigned short Port() const;

  // Makes these signals stop the server. Before Run.
  void StopOn(std::initializer_list<int> signals);

  // Serves until Stop, then cuts what is still connected and waits for its threads. Throws
  // boost::system::system_error when no more connections can be taken.
  void Run();

  // From any thread.
  void Stop();

 private:
  struct Connection;

  void Listen(unsigned short port);
  void Accept();
  void Serve(Connection& connection);
  [[nodiscard]] bool Exchange(Connection& connection);
  void CutConnections();
  void DropFinished();

  Gateway& gateway_;
  std::chrono::milliseconds pause_between_slow_bytes_;
  boost::asio::io_context io_;
  boost::asio::ip::tcp::acceptor acceptor_;
  boost::asio::signal_set signals_;
  std::list<std::unique_ptr<Connection>> connections_;
};

}  // namespace quorvel::sandbox
