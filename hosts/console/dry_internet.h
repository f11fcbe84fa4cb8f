#pragma once

#include <functional>
#include <string>

#include "platform/internet.h"

namespace quorvel {

// An internet that nothing leaves: it keeps what would have been posted. Every request stays without an
// answer.
class DryInternet : public Internet {
 public:
  // `on_post` is called with the path and the body of each post.
  using OnPost = std::function<void(std::string_view path, std::string_view body)>;
  explicit DryInternet(OnPost on_post) : on_post_(std::move(on_post)) {}

  Handle Open(const SessionOptions&) override { return kHandle; }
  Handle Connect(Handle, const ConnectOptions&) override { return kHandle; }
  Handle OpenRequest(Handle, const RequestOptions& options) override;
  bool Send(Handle, std::string_view headers, std::string_view body) override;
  Handle OpenUrl(Handle, TextView, std::uint32_t) override { return Handle::kNull; }
  Block Read(Handle, std::size_t) override { return {}; }
  void Close(Handle) override {}

 private:
  static constexpr Handle kHandle{1};

  OnPost on_post_;
  std::string path_;
};

}  // namespace quorvel
