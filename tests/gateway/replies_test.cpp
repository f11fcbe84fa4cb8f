#include "gateway/replies.h"

#include <gtest/gtest.h>

#include <array>

namespace quorvel {
namespace {

TEST(Replies, ACodeIsTheWholeReply) {
  constexpr std::array kTable = {CodeMessage{kSuccessCode, u"sent"}, CodeMessage{kErrorCode, u"failed"}};
  EXPECT_EQ(FindMessage(kTable, u"000"), u"sent");
  EXPECT_EQ(FindMessage(kTable, u"<ERROR>"), u"failed");
  for (const TextView other : {u"", u" 000", u"000 ", u"000\r\n", u"0000", u"00", u"<error>", u"001"}) {
    EXPECT_EQ(FindMessage(kTable, other), std::nullopt) << ToUtf8(other);
  }
}

TEST(Replies, AnEnvelopeIsOpenedWhenBothEndsAreThere) {
  struct Row {
    TextView reply;
    std::optional<Text> payload;
  };
  for (const auto& [reply, payload] :
       {Row{u"<SMS>120</SMS>", u"120"}, Row{u"<SMS></SMS>", u""},
        Row{u"<SMS>a<SMS>b</SMS>c</SMS>", u"abc"},  // every tag goes
        Row{u"<SMS>120", {}}, Row{u"120</SMS>", {}}, Row{u" <SMS>120</SMS>", {}},
        Row{u"<SMS>120</SMS>\r\n", {}}, Row{u"<sms>120</sms>", {}}, Row{u"</SMS>120<SMS>", {}},
        Row{u"", {}}}) {
    EXPECT_EQ(OpenEnvelope(reply), payload) << ToUtf8(reply);
  }
}

}  // namespace
}  // namespace quorvel
