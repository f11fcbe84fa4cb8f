#include "sandbox/templates.h"

#include "gateway_fixture.h"

namespace quorvel::sandbox {
namespace {

class TemplatesTest : public GatewayTest {
 protected:
  void SetUp() override {
    Data data = DefaultData();
    data.accounts.front().templates.clear();
    Restart(std::move(data));
  }

  std::string Ask(const std::string& body) {
    return Post("/Tools/Excel_Plugin/SaveUserMessageExcel07.asp", body + kPlain + "&ver=1.0");
  }
  std::string Pull() { return Ask("getMsg=Yes"); }
};

constexpr const char* kSenders = "|SenderIDs_Data|QUORVEL|sid|SHOPIN|sid|";

TEST_F(TemplatesTest, PlainTemplatesComeBackAsTyped) {
  EXPECT_EQ(Pull(), kSenders);
  EXPECT_EQ(Ask("SaveMsg=Hello+%23B%23%E9&MsgName=Greeting"), "Successfully Saved!!!");
  EXPECT_EQ(Pull(), std::string("0Greeting|msg_name|Hello #B#\xE9|msg_text|") + kSenders);
  ASSERT_TRUE(saved_);
  Restart(*saved_);
  EXPECT_EQ(Pull(), std::string("0Greeting|msg_name|Hello #B#\xE9|msg_text|") + kSenders);
}

TEST_F(TemplatesTest, UnicodeTemplatesComeBackInByteHex) {
  EXPECT_EQ(Ask("SaveMsg=20AC00410627&isUnicode=1&MsgName=004E"), "Successfully Saved!!!");
  EXPECT_EQ(Pull(), std::string("14E|msg_name|80413F|msg_text|") + kSenders);
  ASSERT_TRUE(saved_);
  EXPECT_EQ(saved_->accounts.front().templates.front().text, u"\u20acA\u0627");
}

TEST_F(TemplatesTest, TextWithAMarkerCannotBreakTheReply) {
  EXPECT_EQ(Ask("SaveMsg=a%7Cmsg%5Ftext%7Cb&MsgName=N"), "Successfully Saved!!!");
  EXPECT_EQ(Ask("SaveMsg=x&MsgName=%7Cmsg%5Fname%7C"), "Successfully Saved!!!");
  EXPECT_EQ(Pull(), std::string("14E|msg_name|617C6D73675F746578747C62|msg_text|"
                                "17C6D73675F6E616D657C|msg_name|78|msg_text|") +
                        kSenders);
}

TEST_F(TemplatesTest, SaysWhatIsWrongAndChangesNothing) {
  ASSERT_EQ(Ask("SaveMsg=x&MsgName=N"), "Successfully Saved!!!");
  for (const char* body : {"SaveMsg=y&MsgName=N", "SaveMsg=&MsgName=M", "SaveMsg=y&MsgName=", "SaveMsg=y",
                           "SaveMsg=004&isUnicode=1&MsgName=004E", "MsgName=Other&delete=Y"}) {
    const std::string answer = Ask(body);
    EXPECT_TRUE(answer.ends_with("!!!") && !answer.starts_with("Successfully")) << body << " " << answer;
  }
  EXPECT_EQ(Pull(), std::string("0N|msg_name|x|msg_text|") + kSenders);
  EXPECT_EQ(Post("/Tools/Excel_Plugin/SaveUserMessageExcel07.asp", "getMsg=Yes&user=demo&passwd=x"), "003");
}

TEST_F(TemplatesTest, DeletesByTheNameThatTheClientKnows) {
  ASSERT_EQ(Ask("SaveMsg=x&MsgName=First"), "Successfully Saved!!!");
  ASSERT_EQ(Ask("SaveMsg=0078&isUnicode=1&MsgName=06270041"), "Successfully Saved!!!");
  ASSERT_EQ(Ask("SaveMsg=0078&isUnicode=1&MsgName=06280042"), "Successfully Saved!!!");
  ASSERT_EQ(Ask("SaveMsg=0078&isUnicode=1&MsgName=06290042"), "Successfully Saved!!!");
  EXPECT_EQ(Ask("MsgName=First&delete=Y"), "Successfully Deleted!!!");
  EXPECT_EQ(Ask("MsgName=%3FA&delete=Y"), "Successfully Deleted!!!");
  EXPECT_EQ(Ask("MsgName=%3FB&delete=Y"), "Message Name Is Not Unique!!!");
  EXPECT_EQ(saved_->accounts.front().templates.size(), 2U);
}

TEST_F(TemplatesTest, KeepsNoTemplateThatItCannotSave) {
  disk_is_full_ = true;
  EXPECT_EQ(Ask("SaveMsg=x&MsgName=N"), "<ERROR>");
  EXPECT_EQ(Pull(), kSenders);
}

}  // namespace
}  // namespace quorvel::sandbox
