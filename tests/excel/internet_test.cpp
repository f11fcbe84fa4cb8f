// WinINet against a server that notes what it receives and answers what it was told.

#include <gtest/gtest.h>
#include <winsock2.h>

#include <thread>

#include "hosts/excel/system_code_page.h"
#include "hosts/excel/wininet_internet.h"
#include "platform/numbers.h"

namespace quorvel::tests {
namespace {

// Serves one connection: reads a request with its body, sends the answer and closes.
class OneAnswer {
 public:
  explicit OneAnswer(std::string answer) : answer_(std::move(answer)) {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // The add-in's ports are signed 16-bit numbers, so the ports that the system hands out may not do.
    for (unsigned short port = 21000; port < 21200; ++port) {
      address.sin_port = htons(port);
      if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) {
        port_ = static_cast<std::int16_t>(port);
        break;
      }
    }
    listen(listener_, 1);
    thread_ = std::thread([this] { Serve(); });
  }
  OneAnswer(const OneAnswer&) = delete;
  OneAnswer& operator=(const OneAnswer&) = delete;
  ~OneAnswer() {
    closesocket(listener_);
    if (thread_.joinable()) thread_.join();
    WSACleanup();
  }

  [[nodiscard]] std::int16_t port() const { return port_; }
  // What arrived; waits for the connection to end.
  [[nodiscard]] const std::string& Received() {
    thread_.join();
    return received_;
  }

 private:
  void Serve() {
    const SOCKET connection = accept(listener_, nullptr, nullptr);
    if (connection == INVALID_SOCKET) return;
    char block[4096];
    while (!IsComplete()) {
      const int size = recv(connection, block, sizeof(block), 0);
      if (size <= 0) break;
      received_.append(block, static_cast<std::size_t>(size));
    }
    send(connection, answer_.data(), static_cast<int>(answer_.size()), 0);
    shutdown(connection, SD_SEND);
    closesocket(connection);
  }

  [[nodiscard]] bool IsComplete() const {
    const std::size_t end = received_.find("\r\n\r\n");
    if (end == std::string::npos) return false;
    const std::size_t length = received_.find("Content-Length: ");
    const std::size_t expected = length == std::string::npos ? 0 : std::stoul(received_.substr(length + 16));
    return received_.size() >= end + 4 + expected;
  }

  std::string answer_;
  std::string received_;
  SOCKET listener_ = INVALID_SOCKET;
  std::int16_t port_ = 0;
  std::thread thread_;
};

std::string Answer(const std::string& status, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\nConnection: close\r\n\r\n" + body;
}

constexpr std::string_view kHeaders = "Content-Type: application/x-www-form-urlencoded\r\n";

class WinInetTest : public testing::Test {
 protected:
  std::string ReadAll(Internet::Handle request, std::size_t size) {
    std::string all;
    for (;;) {
      const Internet::Block block = internet_.Read(request, size);
      EXPECT_LE(block.bytes.size(), size);
      if (!block.ok || block.bytes.empty()) return all;
      all += block.bytes;
    }
  }

  std::string Post(const Internet::SessionOptions& options, const Text& server, std::int16_t port,
                   const std::string& body) {
    const auto session = internet_.Open(options);
    const auto connection = internet_.Connect(session, {server, port, u"", u"", kServiceHttp, 0});
    const auto request =
        internet_.OpenRequest(connection, {"POST", "Path/To.aspx", "HTTP/1.1", "", kFlagKeepConnection});
    sent_ = internet_.Send(request, kHeaders, body);
    std::string answer = ReadAll(request, 1024);
    for (const auto handle : {request, connection, session}) internet_.Close(handle);
    return answer;
  }

  SystemCodePage code_page_;
  WinInetInternet internet_{code_page_};
  bool sent_ = false;
};

TEST_F(WinInetTest, PostsBytesAsTheyAreAndReadsAnAnswerOfSeveralBlocks) {
  std::string reply;
  for (int index = 0; reply.size() < 5000; ++index) reply += std::to_string(index) + ",";
  OneAnswer server(Answer("200 OK", reply));
  const std::string body = "user=a%20b&message=\xE9\x80&x=+";
  EXPECT_EQ(Post({"TheAgent/1", Internet::Access::kDirect, u"", u"", 0}, u"127.0.0.1", server.port(), body),
            reply);
  EXPECT_TRUE(sent_);
  const std::string& request = server.Received();
  EXPECT_EQ(request.substr(0, request.find("\r\n")), "POST /Path/To.aspx HTTP/1.1");
  EXPECT_NE(request.find("User-Agent: TheAgent/1\r\n"), std::string::npos);
  EXPECT_NE(request.find(kHeaders), std::string::npos);
  EXPECT_EQ(request.find("Referer"), std::string::npos);
  EXPECT_EQ(request.substr(request.find("\r\n\r\n") + 4), body);
}

TEST_F(WinInetTest, ANamedProxyIsAskedForAServerThatNobodyKnows) {
  OneAnswer proxy(Answer("404 Not Found", "000"));
  const Text name = u"127.0.0.1:" + NumberToText(std::int32_t{proxy.port()});
  EXPECT_EQ(Post({"A", Internet::Access::kProxy, name, u"", 0}, u"gateway.invalid", 80, "x=1"), "000")
      << "the status does not matter";
  EXPECT_EQ(proxy.Received().rfind("POST http://gateway.invalid", 0), 0U);
}

TEST_F(WinInetTest, FetchesAWholeUrl) {
  OneAnswer server(Answer("200 OK", "L-List,C-Choice"));
  const auto session = internet_.Open({"A", Internet::Access::kPreconfigured, u"", u"", 0});
  const Text url = u"http://127.0.0.1:" + NumberToText(std::int32_t{server.port()}) + u"/Page.asp?x=1";
  const auto page = internet_.OpenUrl(session, url, kFlagReload);
  EXPECT_EQ(ReadAll(page, 2048), "L-List,C-Choice");
  internet_.Close(page);
  internet_.Close(session);
  EXPECT_EQ(server.Received().rfind("GET /Page.asp?x=1 HTTP/1.1\r\n", 0), 0U);
}

TEST_F(WinInetTest, FailuresGiveNothingAndThrowNothing) {
  EXPECT_EQ(Post({"A", Internet::Access::kDirect, u"", u"", 0}, u"127.0.0.1", 1, "x"), "");
  EXPECT_FALSE(sent_);
  OneAnswer silent("");
  EXPECT_EQ(Post({"A", Internet::Access::kDirect, u"", u"", 0}, u"127.0.0.1", silent.port(), "x"), "");
  EXPECT_FALSE(internet_.Read(Internet::Handle::kNull, 10).ok);
  EXPECT_FALSE(internet_.Send(Internet::Handle::kNull, "", ""));
  EXPECT_EQ(internet_.Connect(Internet::Handle::kNull, {}), Internet::Handle::kNull);
  EXPECT_EQ(internet_.OpenRequest(Internet::Handle::kNull, {}), Internet::Handle::kNull);
  EXPECT_EQ(internet_.OpenUrl(Internet::Handle::kNull, u"http://x/", 0), Internet::Handle::kNull);
}

}  // namespace
}  // namespace quorvel::tests
