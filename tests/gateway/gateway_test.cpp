#include "gateway/gateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory/fixed_clock.h"
#include "platform/memory/memory_recordset.h"
#include "platform/memory/memory_settings.h"
#include "platform/memory/memory_workbook.h"
#include "platform/memory/scripted_forms.h"
#include "platform/memory/scripted_internet.h"

namespace quorvel {
namespace {

using Handle = Internet::Handle;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::string_view kAgent = "##Brimlow_ExcelPluginUserAgent/String/##";
constexpr std::size_t kPostBlock = 1024;
constexpr std::size_t kGetBlock = 2048;

class GatewayTest : public testing::Test {
 protected:
  GatewayTest() {
    session_.ServerHost = u"sms.example";
    session_.ServerPort = 88;
  }

  // How many reads an answer of `size` bytes took, in blocks of `block`; the answer has to come whole.
  template <class Request>
  std::size_t ReadsOf(std::size_t size, std::size_t block, Request request) {
    std::string answer(size, 'a');
    for (std::size_t i = 0; i < size; ++i) answer[i] = static_cast<char>('a' + (i / 7) % 26);
    internet_.Answer(answer);
    const std::size_t first = internet_.calls().size();
    EXPECT_EQ(ToUtf8(request()), answer) << size;
    const auto from = internet_.calls().begin() + static_cast<std::ptrdiff_t>(first);
    return static_cast<std::size_t>(
        std::count_if(from, internet_.calls().end(), [block](const InternetCall& call) {
          const auto* const read = std::get_if<ReadCall>(&call);
          return read != nullptr && read->size == block;
        }));
  }

  FixedClock clock_{{.year = 2024, .month = 3, .day = 1}};
  MemoryApplication application_;
  ScriptedForms forms_;
  ScriptedInternet internet_;
  MemorySettings settings_;
  MemoryRecordsets recordsets_{clock_};
  Platform platform_{application_, forms_, internet_, settings_, recordsets_, clock_, Windows1252()};
  Session session_;
  Progress progress_{forms_, clock_};
  Gateway gateway_{platform_, session_, progress_};
};

Handle Nth(std::uintptr_t number) {
  return static_cast<Handle>(number);
}

TEST_F(GatewayTest, APostIsOneRequestThroughTheSessionsProxy) {
  struct Row {
    std::int16_t type;
    std::int16_t port;
    TextView proxy, user, password;  // as handed on
  };
  std::uintptr_t last = 0;
  for (const auto& [type, port, proxy, user, password] :
       {Row{0, 8080, u"", u"", u""}, Row{1, 8080, u"", u"", u""}, Row{2, 8080, u"", u"", u""},
        Row{3, 8080, u"p:8080", u"joe", u"pw"}, Row{3, 0, u"p:0", u"joe", u"pw"}}) {
    session_.ProxyType = type;
    session_.ProxyName = u"p";
    session_.ProxyPort = port;
    session_.ProxyUserName = u"joe";
    session_.ProxyUserPWD = u"pw";
    const std::size_t first = internet_.calls().size();
    internet_.Answer("\xE9\x80");
    EXPECT_EQ(gateway_.HttpPostForm("Merrow/Page.asp", "a=1&b=\xE9"), u"é€");

    const std::vector<InternetCall> calls(internet_.calls().begin() + static_cast<std::ptrdiff_t>(first),
                                          internet_.calls().end());
    const Handle session = Nth(++last);
    const Handle connection = Nth(++last);
    const Handle request = Nth(++last);
    EXPECT_THAT(
        calls,
        ElementsAre(OpenCall{std::string(kAgent), static_cast<Internet::Access>(type), Text(proxy), u"", 0},
                    ConnectCall{session, u"sms.example", 88, Text(user), Text(password), 3, 0},
                    OpenRequestCall{connection, "POST", "Merrow/Page.asp", "HTTP/1.1", "", 0x00400000},
                    SendCall{request, "Content-Type: application/x-www-form-urlencoded\r\n", "a=1&b=\xE9"},
                    ReadCall{request, kPostBlock}, ReadCall{request, kPostBlock}, CloseCall{request},
                    CloseCall{connection}, CloseCall{session}))
        << "proxy type " << type;
  }
}

TEST_F(GatewayTest, APostYieldsTenTimesBetweenSendingAndReading) {
  internet_.Answer("000");
  forms_.OnYield([&] { EXPECT_TRUE(std::holds_alternative<SendCall>(internet_.calls().back())); });
  EXPECT_EQ(gateway_.HttpPostForm("p", ""), u"000");
  EXPECT_EQ(forms_.yields(), 10);
}

TEST_F(GatewayTest, AGetIsOneUncachedRequestThroughThePlatformsOwnProxy) {
  session_.ProxyType = 3;
  session_.ProxyName = u"p";
  internet_.Answer("<SMS>");
  EXPECT_EQ(gateway_.HttpGetUrl(u"http://h/p.asp"), u"<SMS>");
  EXPECT_THAT(internet_.calls(),
              ElementsAre(OpenCall{std::string(kAgent), Internet::Access::kPreconfigured, u"", u"", 0},
                          OpenUrlCall{Nth(1), u"http://h/p.asp", 0x80000000}, ReadCall{Nth(2), kGetBlock},
                          ReadCall{Nth(2), kGetBlock}, CloseCall{Nth(2)}, CloseCall{Nth(1)}));
}

TEST_F(GatewayTest, AnswersComeWholeWhateverTheBlocks) {
  const auto post = [this] { return gateway_.HttpPostForm("p", ""); };
  const auto get = [this] { return gateway_.HttpGetUrl(u"http://h/p"); };
  struct Row {
    std::size_t size, post_reads, get_reads;
  };
  for (const auto& [size, post_reads, get_reads] : {Row{0, 1, 1}, Row{1024, 2, 2}, Row{1025, 3, 2},
                                                    Row{2048, 3, 2}, Row{2049, 4, 3}, Row{10000, 11, 6}}) {
    EXPECT_EQ(ReadsOf(size, kPostBlock, post), post_reads) << size;
    EXPECT_EQ(ReadsOf(size, kGetBlock, get), get_reads) << size;
  }
  internet_.set_block(3);
  EXPECT_EQ(ReadsOf(7, kPostBlock, post), 4U);
  internet_.AnswerCut("half an ans");
  EXPECT_EQ(post(), u"half an ans");
}

TEST_F(GatewayTest, WhateverFailsGivesAnEmptyAnswerAndLeavesNothingOpen) {
  for (const bool is_post : {true, false}) {
    const std::size_t steps = is_post ? 5 : 3;  // up to the first read
    for (std::size_t step = 1; step <= steps; ++step) {
      ScriptedInternet internet;
      internet.Answer("000");
      internet.FailCall(step);
      const Platform platform{application_, forms_, internet, settings_, recordsets_, clock_, Windows1252()};
      Gateway gateway(platform, session_, progress_);
      EXPECT_EQ(is_post ? gateway.HttpPostForm("p", "") : gateway.HttpGetUrl(u"http://h/p"), u"") << step;
      EXPECT_EQ(internet.open_handles(), 0U) << step;
      EXPECT_LE(internet.requests().size(), 1U) << step;
      EXPECT_THAT(internet.calls(), Not(Contains(InternetCall(CloseCall{Handle::kNull})))) << step;
    }
  }
  internet_.NoAnswer();
  EXPECT_EQ(gateway_.HttpPostForm("p", ""), u"");
  EXPECT_EQ(internet_.requests().size(), 1U);
}

TEST_F(GatewayTest, UrlEncodeWritesEveryByteButDigitsAndLetters) {
  struct Row {
    TextView text;
    std::string_view encoded;
  };
  for (const auto& [text, encoded] :
       {Row{u"", ""}, Row{u"09AZaz", "09AZaz"}, Row{u"a-b c", "a%2Db+c"},
        Row{u"/:@[`{", "%2F%3A%40%5B%60%7B"}, Row{u"-_.*~+&=%#", "%2D%5F%2E%2A%7E%2B%26%3D%25%23"},
        Row{u"\t\r\n\x0F\x10\x7F", "%09%0D%0A%0F%10%7F"}, Row{u"é€ÿ\u0081", "%E9%80%FF%81"},
        Row{u"\u4E2D\U0001F600", "%3F%3F%3F"}, Row{TextView(u"\0\x01", 2), "%00%01"}}) {
    EXPECT_EQ(gateway_.UrlEncode(text), encoded) << ToUtf8(text);
  }
}

TEST_F(GatewayTest, WhatIsEncodedCanNoLongerBeCancelled) {
  progress_.Show(u"Please wait");
  ASSERT_TRUE(forms_.Open<frmDisplay>()->Cancel_Process.visible());
  EXPECT_EQ(gateway_.UrlEncode(u""), "");
  frmDisplay& window = *forms_.Open<frmDisplay>();
  EXPECT_FALSE(window.Cancel_Process.visible());
  window.Cancel_Process.UserPress();
  window.UserClose();
  EXPECT_FALSE(progress_.CancelRequested);
  EXPECT_TRUE(window.loaded());
}

TEST_F(GatewayTest, CredentialsAreTrimmedAndTheUserIsEncodedOnlyWhereAsked) {
  EXPECT_EQ(gateway_.User() + gateway_.EncodedUser() + gateway_.PlainPassword(), "");
  session_.UserName = u"  joe & co\u00E9 ";
  session_.Password = u" p w ";
  EXPECT_EQ(gateway_.User(), "joe & co\xE9");
  EXPECT_EQ(gateway_.EncodedUser(), "joe+%26+co%E9");
  EXPECT_EQ(gateway_.PlainPassword(), "p+w");
  // 2024 + 3 + 1 gives 12; the key stands third of three.
  EXPECT_EQ(gateway_.ScrambledPassword(), "%7E%2D%0C%83%03");
}

}  // namespace
}  // namespace quorvel
