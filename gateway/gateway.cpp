#include "gateway/gateway.h"

#include "gateway/scramble_password.h"
#include "gateway/url_encode.h"
#include "platform/numbers.h"

namespace quorvel {

namespace {

constexpr std::string_view kUserAgent = "##Brimlow_ExcelPluginUserAgent/String/##";
constexpr std::string_view kFormHeaders = "Content-Type: application/x-www-form-urlencoded\r\n";
constexpr std::size_t kPostBlock = 1024;
constexpr std::size_t kGetBlock = 2048;
constexpr int kYieldsInARun = 5;

// Closes a handle at the end of its scope, unless it is null.
class HandleCloser {
 public:
  HandleCloser(Internet& internet, Internet::Handle handle) : internet_(internet), handle_(handle) {}
  HandleCloser(const HandleCloser&) = delete;
  HandleCloser& operator=(const HandleCloser&) = delete;
  ~HandleCloser() {
    if (handle_ != Internet::Handle::kNull) internet_.Close(handle_);
  }

 private:
  Internet& internet_;
  Internet::Handle handle_;
};

void YieldRun(Forms& forms) {
  for (int i = 0; i < kYieldsInARun; ++i) forms.Yield();
}

}  // namespace

Internet::SessionOptions Gateway::PostSession() const {
  Internet::SessionOptions options;
  options.agent = kUserAgent;
  options.access = static_cast<Internet::Access>(session_.ProxyType);
  if (options.access == Internet::Access::kProxy) {
    options.proxy = session_.ProxyName + u":" + NumberToText(std::int32_t{session_.ProxyPort});
  }
  return options;
}

Internet::ConnectOptions Gateway::PostConnection() const {
  Internet::ConnectOptions options;
  options.server = session_.ServerHost;
  options.port = session_.ServerPort;
  options.service = kServiceHttp;
  // The proxy's credentials are handed to the connection itself.
  if (static_cast<Internet::Access>(session_.ProxyType) == Internet::Access::kProxy) {
    options.user = session_.ProxyUserName;
    options.password = session_.ProxyUserPWD;
  }
  return options;
}

Text Gateway::HttpPostForm(std::string_view path, std::string_view body) {
  Internet& internet = platform_.internet;
  const Internet::Handle session = internet.Open(PostSession());
  const HandleCloser session_closer(internet, session);
  const Internet::Handle connection = internet.Connect(session, PostConnection());
  const HandleCloser connection_closer(internet, connection);
  const Internet::Handle request =
      internet.OpenRequest(connection, {"POST", path, "HTTP/1.1", "", kFlagKeepConnection});
  const HandleCloser request_closer(internet, request);

  internet.Send(request, kFormHeaders, body);  // a failed send shows as a failed read
  YieldRun(platform_.forms);
  YieldRun(platform_.forms);
  return platform_.code_page.Decode(ReadAll(request, kPostBlock));
}

Text Gateway::HttpGetUrl(TextView url) {
  Internet& internet = platform_.internet;
  Internet::SessionOptions options;
  options.agent = kUserAgent;
  const Internet::Handle session = internet.Open(options);
  const HandleCloser session_closer(internet, session);
  const Internet::Handle page = internet.OpenUrl(session, url, kFlagReload);
  const HandleCloser page_closer(internet, page);
  return platform_.code_page.Decode(ReadAll(page, kGetBlock));
}

std::string Gateway::ReadAll(Internet::Handle request, std::size_t block_size) {
  std::string answer;
  for (;;) {
    const Internet::Block block = platform_.internet.Read(request, block_size);
    if (!block.ok || block.bytes.empty()) return answer;
    answer += block.bytes;
  }
}

std::string Gateway::UrlEncode(TextView text) {
  progress_.HideCancel();
  return UrlEncodeBytes(platform_.code_page.Encode(text));
}

std::string Gateway::User() const {
  return Bytes(Trim(session_.UserName));
}

std::string Gateway::EncodedUser() {
  return UrlEncode(Trim(session_.UserName));
}

std::string Gateway::PlainPassword() {
  return UrlEncode(Trim(session_.Password));
}

std::string Gateway::ScrambledPassword() {
  return UrlEncode(
      ScramblePassword(Trim(session_.Password), platform_.clock.Now(), rnd_, platform_.code_page));
}

}  // namespace quorvel
