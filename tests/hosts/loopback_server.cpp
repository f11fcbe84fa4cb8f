#include "loopback_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <random>
#include <stdexcept>

namespace quorvel {

namespace {

std::size_t ContentLength(const std::string& head) {
  const std::string name = "Content-Length: ";
  const std::size_t at = head.find(name);
  return at == std::string::npos ? 0 : std::stoul(head.substr(at + name.size()));
}

std::string ReadRequest(int connection) {
  std::string request;
  std::array<char, 65536> block{};
  for (;;) {
    const std::size_t head = request.find("\r\n\r\n");
    if (head != std::string::npos && request.size() >= head + 4 + ContentLength(request)) return request;
    const ssize_t size = ::recv(connection, block.data(), block.size(), 0);
    if (size <= 0) return request;
    request.append(block.data(), static_cast<std::size_t>(size));
  }
}

}  // namespace

BoundSocket BindLoopback() {
  std::mt19937 random{std::random_device{}()};
  std::uniform_int_distribution<std::uint16_t> ports(20000, 32767);
  const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  for (int attempt = 0; attempt < 100; ++attempt) {
    const std::uint16_t port = ports(random);
    address.sin_port = htons(port);
    if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
      return {descriptor, static_cast<std::int16_t>(port)};
    }
  }
  throw std::runtime_error("no free loopback port");
}

std::string HttpAnswer(const std::string& body) {
  return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string BodyOf(const std::string& request) {
  const std::size_t head = request.find("\r\n\r\n");
  return head == std::string::npos ? "" : request.substr(head + 4);
}

LoopbackServer::LoopbackServer(std::vector<std::string> answers) : answers_(std::move(answers)) {
  const BoundSocket bound = BindLoopback();
  listener_ = bound.descriptor;
  port_ = bound.port;
  ::listen(listener_, 16);
  thread_ = std::thread([this] { Serve(); });
}

LoopbackServer::~LoopbackServer() {
  ::shutdown(listener_, SHUT_RDWR);  // ends the accept
  thread_.join();
  ::close(listener_);
  for (const int connection : silent_) ::close(connection);
}

std::vector<std::string> LoopbackServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackServer::WaitForRequests(std::size_t count) {
  std::unique_lock lock(mutex_);
  came_.wait(lock, [&] { return requests_.size() >= count; });
}

void LoopbackServer::Serve() {
  for (std::size_t count = 0;; ++count) {
    const int connection = ::accept(listener_, nullptr, nullptr);
    if (connection < 0) return;
    std::string request = ReadRequest(connection);
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(std::move(request));
    }
    came_.notify_all();
    const std::string& answer = answers_[std::min(count, answers_.size() - 1)];
    if (answer == kSilence) {
      silent_.push_back(connection);
      continue;
    }
    (void)::send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
    ::close(connection);
  }
}

}  // namespace quorvel
