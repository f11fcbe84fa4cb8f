#pragma once

#include "platform/code_page.h"
#include "platform/internet.h"

namespace quorvel {

// WinINet, call by call and synchronous; texts travel in the system's 8-bit code page.
class WinInetInternet : public Internet {
 public:
  explicit WinInetInternet(const CodePage& code_page) : code_page_(code_page) {}

  Handle Open(const SessionOptions& options) override;
  Handle Connect(Handle session, const ConnectOptions& options) override;
  Handle OpenRequest(Handle connection, const RequestOptions& options) override;
  bool Send(Handle request, std::string_view headers, std::string_view body) override;
  Handle OpenUrl(Handle session, TextView url, std::uint32_t flags) override;
  Block Read(Handle request, std::size_t size) override;
  void Close(Handle handle) override;

 private:
  const CodePage& code_page_;
};

}  // namespace quorvel
