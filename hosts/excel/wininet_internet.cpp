#include "hosts/excel/wininet_internet.h"

#include <string>

#include "hosts/excel/log.h"
#include "hosts/excel/win32.h"

namespace quorvel {

namespace {

HINTERNET Native(Internet::Handle handle) {
  return reinterpret_cast<HINTERNET>(handle);
}

// The error code tells a user's administrator what a failed send does not: 12007 name not resolved, 12029 no
// connection, 12002 time-out.
Internet::Handle Result(HINTERNET handle, const char* call) {
  if (handle == nullptr) Log(call, "error " + std::to_string(GetLastError()));
  return static_cast<Internet::Handle>(reinterpret_cast<std::uintptr_t>(handle));
}

// WinINet takes an empty text for a proxy, a bypass list or a referrer of that name.
const char* OrNull(const std::string& text) {
  return text.empty() ? nullptr : text.c_str();
}

}  // namespace

Internet::Handle WinInetInternet::Open(const SessionOptions& options) {
  const std::string agent(options.agent);
  const std::string proxy = code_page_.Encode(options.proxy);
  const std::string bypass = code_page_.Encode(options.bypass);
  return Result(InternetOpenA(agent.c_str(), static_cast<DWORD>(options.access), OrNull(proxy),
                              OrNull(bypass), options.flags),
                "InternetOpen");
}

Internet::Handle WinInetInternet::Connect(Handle session, const ConnectOptions& options) {
  if (session == Handle::kNull) return Handle::kNull;
  const std::string server = code_page_.Encode(options.server);
  const std::string user = code_page_.Encode(options.user);
  const std::string password = code_page_.Encode(options.password);
  return Result(InternetConnectA(Native(session), server.c_str(), static_cast<INTERNET_PORT>(options.port),
                                 user.c_str(), password.c_str(), options.service, options.flags, 0),
                "InternetConnect");
}

Internet::Handle WinInetInternet::OpenRequest(Handle connection, const RequestOptions& options) {
  if (connection == Handle::kNull) return Handle::kNull;
  const std::string verb(options.verb);
  const std::string object(options.object);
  const std::string version(options.version);
  const std::string referrer(options.referrer);
  return Result(HttpOpenRequestA(Native(connection), verb.c_str(), object.c_str(), version.c_str(),
                                 OrNull(referrer), nullptr, options.flags, 0),
                "HttpOpenRequest");
}

bool WinInetInternet::Send(Handle request, std::string_view headers, std::string_view body) {
  if (request == Handle::kNull) return false;
  std::string content(body);  // the interface wants it writable
  const BOOL sent = HttpSendRequestA(Native(request), headers.data(), static_cast<DWORD>(headers.size()),
                                     content.data(), static_cast<DWORD>(content.size()));
  if (sent == FALSE) Log("HttpSendRequest", "error " + std::to_string(GetLastError()));
  return sent != FALSE;
}

Internet::Handle WinInetInternet::OpenUrl(Handle session, TextView url, std::uint32_t flags) {
  if (session == Handle::kNull) return Handle::kNull;
  return Result(InternetOpenUrlA(Native(session), code_page_.Encode(url).c_str(), nullptr, 0, flags, 0),
                "InternetOpenUrl");
}

Internet::Block WinInetInternet::Read(Handle request, std::size_t size) {
  if (request == Handle::kNull) return {};
  Block block{true, std::string(size, '\0')};
  DWORD read = 0;
  block.ok = InternetReadFile(Native(request), block.bytes.data(), static_cast<DWORD>(size), &read) != FALSE;
  block.bytes.resize(block.ok ? read : 0);
  return block;
}

void WinInetInternet::Close(Handle handle) {
  if (handle != Handle::kNull) InternetCloseHandle(Native(handle));
}

}  // namespace quorvel
