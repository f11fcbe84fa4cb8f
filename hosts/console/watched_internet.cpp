#include "hosts/console/watched_internet.h"

namespace quorvel {

namespace {

constexpr std::size_t kKept = 16;  // bytes

}  // namespace

bool WatchedInternet::Send(Handle request, std::string_view headers, std::string_view body) {
  last_answer_.clear();
  return target_.Send(request, headers, body);
}

Internet::Handle WatchedInternet::OpenUrl(Handle session, TextView url, std::uint32_t flags) {
  last_answer_.clear();
  return target_.OpenUrl(session, url, flags);
}

Internet::Block WatchedInternet::Read(Handle request, std::size_t size) {
  Block block = target_.Read(request, size);
  if (last_answer_.size() < kKept) last_answer_.append(block.bytes, 0, kKept - last_answer_.size());
  return block;
}

}  // namespace quorvel
