#include "sandbox/http_server.h"

#include <gtest/gtest.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <boost/system/system_error.hpp>
#include <string>
#include <thread>

#include "sandbox/data_file.h"
#include "sandbox/faults.h"

namespace quorvel::sandbox {
namespace {

namespace asio = boost::asio;
using tcp = asio::ip::tcp;

constexpr std::size_t kLongBody = 4'000'000;  // far beyond a socket's buffers

// A client that writes bytes and reads bytes.
class Client {
 public:
  explicit Client(unsigned short port) : socket_(io_) {
    socket_.connect({asio::ip::address_v4::loopback(), port});
  }

  void Write(const std::string& bytes) { asio::write(socket_, asio::buffer(bytes)); }

  // Up to and with the first `end`.
  std::string ReadUntil(const std::string& end) {
    std::string bytes;
    boost::system::error_code error;
    bytes.resize(asio::read_until(socket_, asio::dynamic_buffer(bytes), end, error));
    return bytes;
  }

  // All that comes until the connection ends, and how it ends.
  std::string ReadToEnd() {
    std::string bytes;
    asio::read(socket_, asio::dynamic_buffer(bytes), end_);
    return bytes;
  }

  [[nodiscard]] bool WasReset() const { return end_ == asio::error::connection_reset; }

 private:
  asio::io_context io_;
  tcp::socket socket_;
  boost::system::error_code end_;
};

std::string BodyOf(const std::string& reply) {
  const std::size_t end = reply.find("\r\n\r\n");
  return end == std::string::npos ? "no reply" : reply.substr(end + 4);
}

class HttpServerTest : public ::testing::Test {
 protected:
  void TearDown() override {
    server_.Stop();
    thread_.join();
  }

  std::string Post(const std::string& target, const std::string& body, const std::string& headers = "") {
    Client client(server_.Port());
    client.Write(PostBytes(target, body, "Connection: close\r\n" + headers));
    return client.ReadToEnd();
  }

  static std::string PostBytes(const std::string& target, const std::string& body,
                               const std::string& headers = "") {
    return "POST " + target + " HTTP/1.1\r\nHost: origin.example\r\n" + headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  }

  static constexpr const char* kValidate = "/Tools/Excel_Plugin/ValidateCRN.asp";
  static constexpr const char* kSuccess = "[Success]sms1.quorvel.example";

  Gateway gateway_{DefaultData(), FaultRules(), Surroundings{SystemLocalTime, {}, [](std::string_view) {}}};
  HttpServer server_{gateway_, 0, std::chrono::milliseconds(0)};
  std::thread thread_{[this] { server_.Run(); }};
};

TEST_F(HttpServerTest, AnswersAsOriginAndAsProxy) {
  EXPECT_GT(server_.Port(), 0);
  EXPECT_LT(server_.Port(), 32768);
  EXPECT_EQ(BodyOf(Post(kValidate, "CRN=1001")), kSuccess);
  EXPECT_EQ(BodyOf(Post("http://sms9.example:88" + std::string(kValidate), "CRN=1001")), kSuccess);
  EXPECT_TRUE(Post("/nowhere", "").starts_with("HTTP/1.1 404 "));

  const Answer received = gateway_.Handle({"GET", "/_sandbox/messages", "", ""});
  EXPECT_NE(received.body.find(R"("host":"origin.example")"), std::string::npos) << received.body;
  EXPECT_NE(received.body.find(R"("host":"sms9.example:88")"), std::string::npos) << received.body;
}

TEST_F(HttpServerTest, KeepsAConnectionAlive) {
  Client client(server_.Port());
  client.Write(PostBytes(kValidate, "CRN=1001") + PostBytes(kValidate, "CRN=9", "Connection: close\r\n"));
  const std::string replies = client.ReadToEnd();
  EXPECT_NE(replies.find(kSuccess), std::string::npos);
  EXPECT_TRUE(replies.ends_with("[Invalid]"));
}

TEST_F(HttpServerTest, TakesLongBodiesAndAsksForThemWhenTheClientWaits) {
  const std::string numbers(kLongBody, '1');
  const std::string body =
      "user=demo&passwd=demo&message=Hi&MMCellData=&SenderName=Q&mobilenumber=" + numbers;
  EXPECT_EQ(BodyOf(Post("/Tools/Excel_Plugin/SaveBulkSMS.aspx", body)), "000");

  const std::string request =
      PostBytes(kValidate, "CRN=1001", "Connection: close\r\nExpect: 100-continue\r\n");
  const std::size_t headers = request.size() - std::string_view("CRN=1001").size();
  Client client(server_.Port());
  client.Write(request.substr(0, headers));
  ASSERT_EQ(client.ReadUntil("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
  client.Write(request.substr(headers));
  EXPECT_EQ(BodyOf(client.ReadToEnd()), kSuccess);
}

TEST_F(HttpServerTest, EachFaultLooksItsWayOnTheWire) {
  const auto with = [this](const std::string& rule) {
    EXPECT_TRUE(Post("/_sandbox/fail", "validate-crn=" + rule).starts_with("HTTP/1.1 200 "));
    return Post(kValidate, "CRN=1001");
  };
  const std::string whole = Post(kValidate, "CRN=1001");
  EXPECT_EQ(with("refuse"), "");
  EXPECT_EQ(with("cut-before"), "");
  EXPECT_EQ(with("cut-inside"), whole.substr(0, whole.size() - (std::string_view(kSuccess).size() + 1) / 2));
  EXPECT_EQ(with("slow"), whole);
  EXPECT_EQ(BodyOf(with("0110")), "0110");
  EXPECT_EQ(BodyOf(with("error")), "<ERROR>");
  const std::string empty = with("empty");
  EXPECT_TRUE(empty.starts_with("HTTP/1.1 200 ") && empty.ends_with("Content-Length: 0\r\n\r\n")) << empty;
  EXPECT_EQ(BodyOf(with("garbage")), Garbage(512));
  EXPECT_EQ(BodyOf(with("megabyte")), Garbage(std::size_t{1024} * 1024));
}

TEST_F(HttpServerTest, CutAfterResetsTheConnectionBehindTheWholeReply) {
  Post("/_sandbox/fail", "validate-crn=cut-after");
  Client client(server_.Port());
  client.Write(PostBytes(kValidate, "CRN=1001"));
  EXPECT_EQ(BodyOf(client.ReadToEnd()), kSuccess);
  EXPECT_TRUE(client.WasReset());
}

TEST_F(HttpServerTest, BrokenRequestsHarmNobody) {
  for (const char* bytes :
       {"nonsense\r\n\r\n", "POST / HTTP/1.1\r\nContent-Length: x\r\n\r\n", "\0\x01\x02"}) {
    Client client(server_.Port());
    client.Write(std::string(bytes) + "\r\n\r\n");
    EXPECT_EQ(client.ReadToEnd(), "");
  }
  { Client(server_.Port()).Write("POST / HTTP/1.1\r\nContent-Length: 100\r\n\r\nhalf"); }
  EXPECT_EQ(BodyOf(Post(kValidate, "CRN=1001")), kSuccess);
}

TEST_F(HttpServerTest, StopEndsIdleConnections) {
  Client client(server_.Port());
  client.Write(PostBytes(kValidate, "CRN=1001"));
  ASSERT_NE(client.ReadUntil(kSuccess), "");
  server_.Stop();
  EXPECT_EQ(client.ReadToEnd(), "");  // would wait for ever
}

TEST_F(HttpServerTest, RefusesAPortThatIsTaken) {
  EXPECT_THROW(HttpServer(gateway_, server_.Port()), boost::system::system_error);
}

}  // namespace
}  // namespace quorvel::sandbox
