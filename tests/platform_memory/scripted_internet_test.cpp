#include "platform/memory/scripted_internet.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quorvel {
namespace {

using Handle = Internet::Handle;

struct Exchange {
  Handle session{};
  Handle connection{};
  Handle request{};
};

Exchange OpenPost(Internet& internet) {
  Exchange exchange;
  exchange.session = internet.Open({.agent = "agent", .proxy = {}, .bypass = {}});
  exchange.connection =
      internet.Connect(exchange.session, {.server = u"host", .port = 80, .user = {}, .password = {}});
  exchange.request = internet.OpenRequest(
      exchange.connection, {.verb = "POST", .object = "a.asp", .version = "HTTP/1.1", .referrer = ""});
  return exchange;
}

TEST(ScriptedInternet, RecordsTheCallsWithTheirArguments) {
  ScriptedInternet internet;
  internet.Answer("000");
  const Exchange exchange = OpenPost(internet);
  EXPECT_TRUE(internet.Send(exchange.request, "H: 1\r\n", "a=b"));
  EXPECT_EQ(internet.Read(exchange.request, 2).bytes, "00");
  internet.Close(exchange.request);

  ASSERT_EQ(internet.calls().size(), 6U);
  EXPECT_EQ(
      std::get<ConnectCall>(internet.calls()[1]),
      (ConnectCall{.session = exchange.session, .server = u"host", .port = 80, .user = {}, .password = {}}));
  EXPECT_EQ(std::get<SendCall>(internet.calls()[3]), (SendCall{exchange.request, "H: 1\r\n", "a=b"}));
  EXPECT_EQ(std::get<ReadCall>(internet.calls()[4]), (ReadCall{exchange.request, 2}));
  ASSERT_EQ(internet.requests().size(), 1U);
  EXPECT_EQ(internet.requests()[0], (ScriptedInternet::Request{u"host", 80, "a.asp", "H: 1\r\n", "a=b"}));
  EXPECT_EQ(internet.open_handles(), 2U);
}

TEST(ScriptedInternet, AnswersByBlocksAndBreaksOffWhereItIsTold) {
  ScriptedInternet internet;
  internet.set_block(2);
  internet.AnswerCut("abc");
  const Exchange exchange = OpenPost(internet);
  internet.Send(exchange.request, "", "");
  EXPECT_EQ(internet.Read(exchange.request, 1024).bytes, "ab");
  EXPECT_EQ(internet.Read(exchange.request, 1024).bytes, "c");
  EXPECT_FALSE(internet.Read(exchange.request, 1024).ok);

  internet.Answer("");
  const Handle page = internet.OpenUrl(exchange.session, u"http://host/", kFlagReload);
  const Internet::Block end = internet.Read(page, 1024);
  EXPECT_TRUE(end.ok);
  EXPECT_EQ(end.bytes, "");
}

TEST(ScriptedInternet, FailsTheCallOfThatNumberAndWhatBuildsOnIt) {
  ScriptedInternet internet;
  internet.FailCall(2);
  const Exchange exchange = OpenPost(internet);
  EXPECT_NE(exchange.session, Handle::kNull);
  EXPECT_EQ(exchange.connection, Handle::kNull);
  EXPECT_EQ(exchange.request, Handle::kNull);
  EXPECT_FALSE(internet.Send(exchange.request, "", ""));
  EXPECT_FALSE(internet.Read(exchange.request, 1024).ok);
  EXPECT_TRUE(internet.requests().empty());
}

TEST(ScriptedInternet, NoAnswerFailsTheSendAndAnUnforeseenRequestIsAFault) {
  ScriptedInternet internet;
  internet.NoAnswer();
  const Exchange exchange = OpenPost(internet);
  EXPECT_FALSE(internet.Send(exchange.request, "", "a=b"));
  EXPECT_FALSE(internet.Read(exchange.request, 1024).ok);
  EXPECT_EQ(internet.requests().size(), 1U);
  EXPECT_THROW(internet.Send(exchange.request, "", "a=b"), std::logic_error);
}

}  // namespace
}  // namespace quorvel
