#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace quorvel {

// The platform's internet interface in the shape of WinINet: a session, in it a connection, in it a request,
// each by a handle; answers are read by blocks. Synchronous. Nothing throws: a call on the null handle fails,
// and a failure gives the null handle, false, or a failed read.
class Internet {
 public:
  enum class Handle : std::uintptr_t { kNull = 0 };

  enum class Access { kPreconfigured = 0, kDirect = 1, kProxy = 3 };

  struct SessionOptions {
    std::string_view agent;
    Access access = Access::kPreconfigured;
    Text proxy;   // "host:port" for kProxy, otherwise empty
    Text bypass;  // hosts that are reached directly
    std::uint32_t flags = 0;
  };

  struct ConnectOptions {
    Text server;
    std::int16_t port = 0;
    Text user;  // offered to the server that asks for it
    Text password;
    std::uint32_t service = 0;
    std::uint32_t flags = 0;
  };

  struct RequestOptions {
    std::string_view verb;
    std::string_view object;  // the path; a leading "/" is added when it has none
    std::string_view version;
    std::string_view referrer;
    std::uint32_t flags = 0;
  };

  struct Block {
    bool ok = false;    // false: the read failed
    std::string bytes;  // empty with ok: the end
  };

  virtual ~Internet() = default;

  virtual Handle Open(const SessionOptions& options) = 0;
  virtual Handle Connect(Handle session, const ConnectOptions& options) = 0;
  virtual Handle OpenRequest(Handle connection, const RequestOptions& options) = 0;
  // Posts once: no retry at any level. True when any HTTP answer came.
  virtual bool Send(Handle request, std::string_view headers, std::string_view body) = 0;
  // GETs a full URL. Null when no HTTP answer came.
  virtual Handle OpenUrl(Handle session, TextView url, std::uint32_t flags) = 0;
  // At most `size` bytes of the answer.
  virtual Block Read(Handle request, std::size_t size) = 0;
  virtual void Close(Handle handle) = 0;
};

inline constexpr std::uint32_t kServiceHttp = 3;
inline constexpr std::uint32_t kFlagKeepConnection = 0x00400000;
inline constexpr std::uint32_t kFlagReload = 0x80000000;

}  // namespace quorvel
