#include "gateway/replies.h"

#include <algorithm>

namespace quorvel {

namespace {

constexpr TextView kOpeningTag = u"<SMS>";
constexpr TextView kClosingTag = u"</SMS>";

}  // namespace

std::optional<TextView> FindMessage(std::span<const CodeMessage> table, TextView reply) {
  const auto found =
      std::find_if(table.begin(), table.end(), [&](const CodeMessage& row) { return row.code == reply; });
  if (found == table.end()) return std::nullopt;
  return found->message;
}

Text WithoutTags(TextView reply) {
  return Replace(Replace(reply, kOpeningTag, u""), kClosingTag, u"");
}

std::optional<Text> OpenEnvelope(TextView reply) {
  if (!reply.starts_with(kOpeningTag) || !reply.ends_with(kClosingTag)) return std::nullopt;
  return WithoutTags(reply);
}

}  // namespace quorvel
