#include "hosts/common/curl_internet.h"

#include <curl/curl.h>

#include <algorithm>
#include <exception>
#include <memory>

namespace quorvel {

namespace {

constexpr long kConnectTimeout = 60;   // seconds
constexpr long kSilenceTimeout = 300;  // seconds

struct CurlFree {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

using CurlHandle = std::unique_ptr<CURL, CurlFree>;
using CurlUrl = std::unique_ptr<CURLU, CurlFree>;
using HeaderList = std::unique_ptr<curl_slist, CurlFree>;

void Append(HeaderList& list, const std::string& line) {
  if (curl_slist* const longer = curl_slist_append(list.get(), line.c_str())) {
    (void)list.release();
    list.reset(longer);
  }
}

// The caller's lines, without the headers that libcurl would add to a post on its own.
HeaderList PostHeaders(std::string_view headers) {
  HeaderList list;
  Append(list, "Accept:");
  Append(list, "Expect:");
  while (!headers.empty()) {
    const std::size_t end = headers.find("\r\n");
    const std::string_view line = headers.substr(0, end);
    if (!line.empty()) Append(list, std::string(line));
    headers.remove_prefix(end == std::string_view::npos ? headers.size() : end + 2);
  }
  return list;
}

// Whether `server` is nothing but a host name or address.
bool IsHost(const std::string& server) {
  const CurlUrl url(curl_url());
  return !server.empty() && server.find('\0') == std::string::npos &&
         curl_url_set(url.get(), CURLUPART_HOST, server.c_str(), 0) == CURLUE_OK;
}

std::size_t WriteReply(char* bytes, std::size_t, std::size_t size, void* target) {
  try {
    static_cast<std::string*>(target)->append(bytes, size);
    return size;
  } catch (const std::exception&) {  // out of memory: libcurl must not be unwound; it ends the exchange
    return CURL_WRITEFUNC_ERROR;
  }
}

// Notes in the bool `ended` whether the answer's head has come to its end.
std::size_t NoteHeadLine(char* bytes, std::size_t, std::size_t size, void* ended) {
  const std::string_view line(bytes, size);
  if (line.starts_with("HTTP/")) *static_cast<bool*>(ended) = false;
  if (line == "\r\n" || line == "\n") *static_cast<bool*>(ended) = true;
  return size;
}

int AskToGiveUp(void* give_up, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return (*static_cast<const CurlInternet::GiveUp*>(give_up))() ? 1 : 0;
}

void InitializeOnce() {
  static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
  (void)initialized;  // a failure shows as a null handle of every transfer
}

}  // namespace

// One exchange: options first, then Perform.
class CurlInternet::Transfer {
 public:
  Transfer(const Session& session, const GiveUp& give_up) : curl_(curl_easy_init()) {
    if (curl_ == nullptr) return;
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_PATH_AS_IS, 1L);
    Set(CURLOPT_FRESH_CONNECT, 1L);
    Set(CURLOPT_FORBID_REUSE, 1L);
    Set(CURLOPT_CONNECTTIMEOUT, kConnectTimeout);
    Set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    Set(CURLOPT_LOW_SPEED_TIME, kSilenceTimeout);
    Set(CURLOPT_USERAGENT, session.agent.c_str());
    SetProxy(session);
    if (give_up) {
      Set(CURLOPT_NOPROGRESS, 0L);
      Set(CURLOPT_XFERINFOFUNCTION, &AskToGiveUp);
      Set(CURLOPT_XFERINFODATA, &give_up);
    }
  }

  void SetUser(const Connection& connection) {
    if (connection.user.empty()) return;
    Set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
    Set(CURLOPT_USERNAME, connection.user.c_str());
    Set(CURLOPT_PASSWORD, connection.password.c_str());
  }

  // `body` is not copied: it outlives Perform.
  void SetPost(std::string_view headers, std::string_view body) {
    headers_ = PostHeaders(headers);
    Set(CURLOPT_POST, 1L);
    Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    Set(CURLOPT_POSTFIELDS, body.empty() ? "" : body.data());
    Set(CURLOPT_HTTPHEADER, headers_.get());
  }

  [[nodiscard]] Reply Perform(const std::string& url) {
    Reply reply;
    if (curl_ == nullptr || failed_ || url.find('\0') != std::string::npos) return reply;
    Set(CURLOPT_URL, url.c_str());
    Set(CURLOPT_WRITEFUNCTION, &WriteReply);
    Set(CURLOPT_WRITEDATA, &reply.bytes);
    Set(CURLOPT_HEADERFUNCTION, &NoteHeadLine);
    Set(CURLOPT_HEADERDATA, &reply.came);
    reply.complete = curl_easy_perform(curl_.get()) == CURLE_OK;
    return reply;
  }

 private:
  template <class T>
  void Set(CURLoption option, T value) {
    if (curl_easy_setopt(curl_.get(), option, value) != CURLE_OK) failed_ = true;
  }

  void SetProxy(const Session& session) {
    if (session.access == Access::kPreconfigured) return;
    Set(CURLOPT_PROXY, session.proxy.c_str());
    Set(CURLOPT_NOPROXY, session.bypass.c_str());
  }

  CurlHandle curl_;
  HeaderList headers_;
  bool failed_ = false;  // an option was refused
};

CurlInternet::CurlInternet(GiveUp give_up) : give_up_(std::move(give_up)) {
  InitializeOnce();
}

Internet::Handle CurlInternet::Keep(Node node) {
  const auto handle = static_cast<Handle>(++last_handle_);
  nodes_.emplace(handle, std::move(node));
  return handle;
}

template <class T>
T* CurlInternet::Find(Handle handle) {
  const auto found = nodes_.find(handle);
  return found == nodes_.end() ? nullptr : std::get_if<T>(&found->second);
}

Internet::Handle CurlInternet::Open(const SessionOptions& options) {
  const bool named = options.access == Access::kProxy;
  if (named && options.proxy.empty()) return Handle::kNull;
  return Keep(Session{.agent = std::string(options.agent),
                      .access = options.access,
                      .proxy = named ? ToUtf8(options.proxy) : "",
                      .bypass = named ? ToUtf8(options.bypass) : ""});
}

Internet::Handle CurlInternet::Connect(Handle session, const ConnectOptions& options) {
  const Session* const parent = Find<Session>(session);
  std::string server = ToUtf8(options.server);
  if (parent == nullptr || options.port <= 0 || !IsHost(server)) return Handle::kNull;
  return Keep(Connection{.session = *parent,
                         .server = std::move(server),
                         .port = options.port,
                         .user = ToUtf8(options.user),
                         .password = ToUtf8(options.password)});
}

Internet::Handle CurlInternet::OpenRequest(Handle connection, const RequestOptions& options) {
  const Connection* const parent = Find<Connection>(connection);
  if (parent == nullptr || options.verb != "POST") return Handle::kNull;
  std::string object(options.object);
  if (!object.starts_with('/')) object.insert(object.begin(), '/');
  return Keep(Request{.connection = *parent, .object = std::move(object), .reply = {}});
}

bool CurlInternet::Send(Handle request, std::string_view headers, std::string_view body) {
  Request* const found = Find<Request>(request);
  if (found == nullptr) return false;
  const Connection& connection = found->connection;
  Transfer transfer(connection.session, give_up_);
  transfer.SetUser(connection);
  transfer.SetPost(headers, body);
  found->reply =
      transfer.Perform("http://" + connection.server + ":" + std::to_string(connection.port) + found->object);
  return found->reply.came;
}

Internet::Handle CurlInternet::OpenUrl(Handle session, TextView url, std::uint32_t /*flags*/) {
  const Session* const parent = Find<Session>(session);
  if (parent == nullptr) return Handle::kNull;
  Transfer transfer(*parent, give_up_);
  Reply reply = transfer.Perform(ToUtf8(url));
  if (!reply.came) return Handle::kNull;
  return Keep(Request{.connection = {}, .object = {}, .reply = std::move(reply)});
}

Internet::Block CurlInternet::Read(Handle request, std::size_t size) {
  Request* const found = Find<Request>(request);
  if (found == nullptr || !found->reply.came) return {};
  Reply& reply = found->reply;
  Block block{.ok = true, .bytes = reply.bytes.substr(reply.read, size)};
  reply.read += block.bytes.size();
  if (block.bytes.empty() && !reply.complete) return {};
  return block;
}

void CurlInternet::Close(Handle handle) {
  nodes_.erase(handle);
}

}  // namespace quorvel
