#include "sandbox/http_server.h"

#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http.hpp>
#include <cstdint>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace quorvel::sandbox {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using boost::system::error_code;
using tcp = asio::ip::tcp;

constexpr unsigned short kFirstFreePort = 20000;
constexpr unsigned short kLastFreePort = 32767;
constexpr unsigned kFreePorts = kLastFreePort - kFirstFreePort + 1;

// Out of reach of a job of a million rows, which is about 100 MB.
constexpr std::uint64_t kBodyLimit = std::uint64_t{4} * 1024 * 1024 * 1024;

constexpr std::string_view kScheme = "http://";

using HttpRequest = http::request<http::string_body>;
using HttpResponse = http::response<http::string_body>;

// The host that was asked for: of a proxy it is part of the target.
std::string HostOf(const HttpRequest& message) {
  const std::string_view target(message.target().data(), message.target().size());
  if (!target.starts_with(kScheme)) return std::string(message[http::field::host]);
  const std::string_view rest = target.substr(kScheme.size());
  return std::string(rest.substr(0, rest.find('/')));
}

HttpResponse MakeResponse(const HttpRequest& message, Answer& answer) {
  HttpResponse response(static_cast<http::status>(answer.status), message.version());
  response.set(http::field::content_type, answer.content_type);
  response.keep_alive(message.keep_alive());
  response.body() = std::move(answer.body);
  response.prepare_payload();
  return response;
}

}  // namespace

struct HttpServer::Connection {
  explicit Connection(tcp::socket accepted) : socket(std::move(accepted)) {}

  // From any thread; what the connection's own thread waits for ends at once.
  void Cut() {
    const std::lock_guard lock(closing);
    if (socket.is_open()) ::shutdown(socket.native_handle(), SHUT_RDWR);
  }

  void Reset() {
    const std::lock_guard lock(closing);
    error_code error;
    socket.set_option(asio::socket_base::linger(true, 0), error);
    socket.close(error);
  }

  // Nothing when the connection ends first or sends no HTTP.
  std::optional<HttpRequest> ReadRequest() {
    error_code error;
    http::request_parser<http::string_body> parser;
    parser.body_limit(kBodyLimit);
    http::read_header(socket, buffer, parser, error);
    if (error) return std::nullopt;
    if (boost::beast::iequals(parser.get()[http::field::expect], "100-continue")) {
      asio::write(socket, asio::buffer(std::string_view("HTTP/1.1 100 Continue\r\n\r\n")), error);
    }
    if (!error) http::read(socket, buffer, parser, error);
    if (error) return std::nullopt;
    return parser.release();
  }

  struct Pace {
    std::size_t body_bytes;  // to send of the body; its whole length is announced
    std::size_t step;        // bytes at a time
    std::chrono::milliseconds pause;
  };

  // Whether all of that was sent.
  bool Write(HttpResponse& response, const Pace& pace) {
    error_code error;
    http::response_serializer<http::string_body> serializer(response);
    http::write_header(socket, serializer, error);
    for (std::size_t at = 0; at < pace.body_bytes && !error; at += pace.step) {
      std::this_thread::sleep_for(pace.pause);
      const std::size_t step = std::min(pace.step, pace.body_bytes - at);
      asio::write(socket, asio::buffer(response.body().data() + at, step), error);
    }
    return !error;
  }

  tcp::socket socket;
  std::mutex closing;
  boost::beast::flat_buffer buffer;
  std::atomic<bool> finished = false;
  std::jthread thread;  // last: it ends before the rest goes
};

HttpServer::HttpServer(Gateway& gateway, unsigned short port,
                       std::chrono::milliseconds pause_between_slow_bytes)
    : gateway_(gateway), pause_between_slow_bytes_(pause_between_slow_bytes), acceptor_(io_), signals_(io_) {
  Listen(port);
}

HttpServer::~HttpServer() {
  CutConnections();
}

unsigned short HttpServer::Port() const {
  return acceptor_.local_endpoint().port();
}

void HttpServer::Listen(unsigned short port) {
  const auto address = asio::ip::address_v4::loopback();
  acceptor_.open(tcp::v4());
  acceptor_.set_option(tcp::acceptor::reuse_address(true));
  if (port != 0) {
    acceptor_.bind({address, port});
  } else {
    const unsigned start = std::random_device()() % kFreePorts;
    error_code error = asio::error::address_in_use;
    for (unsigned i = 0; i < kFreePorts && error == asio::error::address_in_use; ++i) {
      acceptor_.bind({address, static_cast<unsigned short>(kFirstFreePort + (start + i) % kFreePorts)},
                     error);
    }
    if (error) throw boost::system::system_error(error);
  }
  acceptor_.listen();
}

void HttpServer::StopOn(std::initializer_list<int> signals) {
  for (const int signal : signals) signals_.add(signal);
  signals_.async_wait([this](const error_code& error, int /*signal*/) {
    if (!error) Stop();
  });
}

void HttpServer::Run() {
  Accept();
  io_.run();
  CutConnections();
}

void HttpServer::Stop() {
  io_.stop();
}

void HttpServer::Accept() {
  acceptor_.async_accept([this](const error_code& error, tcp::socket socket) {
    if (error && error != asio::error::connection_aborted) throw boost::system::system_error(error);
    DropFinished();
    if (!error) {
      Connection& connection = *connections_.emplace_back(std::make_unique<Connection>(std::move(socket)));
      connection.thread = std::jthread([this, &connection] { Serve(connection); });
    }
    Accept();
  });
}

void HttpServer::CutConnections() {
  for (const auto& connection : connections_) connection->Cut();
  connections_.clear();
}

void HttpServer::DropFinished() {
  connections_.remove_if([](const auto& connection) { return connection->finished.load(); });
}

void HttpServer::Serve(Connection& connection) {
  error_code error;
  connection.socket.set_option(tcp::no_delay(true), error);
  while (Exchange(connection)) {
  }
  connection.Cut();
  connection.finished = true;
}

// One request and its answer; false when the connection is at its end.
bool HttpServer::Exchange(Connection& connection) {
  auto message = connection.ReadRequest();
  if (!message) return false;
  Answer answer = gateway_.Handle({std::string(message->method_string()), std::string(message->target()),
                                   HostOf(*message), std::move(message->body())});
  const Delivery delivery = answer.delivery;
  if (delivery == Delivery::kNothing) return false;
  HttpResponse response = MakeResponse(*message, answer);
  const auto pause = delivery == Delivery::kSlow ? pause_between_slow_bytes_ : std::chrono::milliseconds(0);
  const std::size_t body = response.body().size();
  const bool sent = connection.Write(response, {.body_bytes = delivery == Delivery::kHalf ? body / 2 : body,
                                                .step = delivery == Delivery::kSlow ? 1 : body,
                                                .pause = pause});
  if (delivery == Delivery::kThenReset) connection.Reset();
  return sent && delivery != Delivery::kHalf && delivery != Delivery::kThenReset && message->keep_alive();
}

}  // namespace quorvel::sandbox
