#include "hosts/console/dry_internet.h"

namespace quorvel {

Internet::Handle DryInternet::OpenRequest(Handle, const RequestOptions& options) {
  path_ = options.object;
  return kHandle;
}

bool DryInternet::Send(Handle, std::string_view /*headers*/, std::string_view body) {
  on_post_(path_, body);
  return false;
}

}  // namespace quorvel
