#include "platform/memory/scripted_internet.h"

#include <algorithm>
#include <stdexcept>

namespace quorvel {

bool ScriptedInternet::Record(InternetCall call) {
  calls_.push_back(std::move(call));
  return calls_.size() != failing_call_;
}

Internet::Handle ScriptedInternet::NewHandle(Node node) {
  const auto handle = static_cast<Handle>(++last_handle_);
  open_.emplace(handle, std::move(node));
  return handle;
}

ScriptedInternet::Reply ScriptedInternet::TakeAnswer(const std::string& object) {
  if (answers_.empty()) throw std::logic_error("no answer for " + object);
  Reply reply = std::move(answers_.front());
  answers_.pop_front();
  return reply;
}

Internet::Handle ScriptedInternet::Open(const SessionOptions& options) {
  const bool works = Record(OpenCall{.agent = std::string(options.agent),
                                     .access = options.access,
                                     .proxy = options.proxy,
                                     .bypass = options.bypass,
                                     .flags = options.flags});
  return works ? NewHandle({}) : Handle::kNull;
}

Internet::Handle ScriptedInternet::Connect(Handle session, const ConnectOptions& options) {
  const bool works = Record(ConnectCall{.session = session,
                                        .server = options.server,
                                        .port = options.port,
                                        .user = options.user,
                                        .password = options.password,
                                        .service = options.service,
                                        .flags = options.flags});
  if (!works || !open_.contains(session)) return Handle::kNull;
  return NewHandle({.server = options.server, .port = options.port, .object = {}, .reply = {}});
}

Internet::Handle ScriptedInternet::OpenRequest(Handle connection, const RequestOptions& options) {
  const bool works = Record(OpenRequestCall{.connection = connection,
                                            .verb = std::string(options.verb),
                                            .object = std::string(options.object),
                                            .version = std::string(options.version),
                                            .referrer = std::string(options.referrer),
                                            .flags = options.flags});
  const auto parent = open_.find(connection);
  if (!works || parent == open_.end()) return Handle::kNull;
  Node node = parent->second;
  node.object = options.object;
  return NewHandle(std::move(node));
}

bool ScriptedInternet::Send(Handle request, std::string_view headers, std::string_view body) {
  const bool works =
      Record(SendCall{.request = request, .headers = std::string(headers), .body = std::string(body)});
  const auto found = open_.find(request);
  if (!works || found == open_.end()) return false;
  Node& node = found->second;
  requests_.push_back({.server = node.server,
                       .port = node.port,
                       .object = node.object,
                       .headers = std::string(headers),
                       .body = std::string(body)});
  node.reply = TakeAnswer(node.object);
  return node.reply.sent;
}

Internet::Handle ScriptedInternet::OpenUrl(Handle session, TextView url, std::uint32_t flags) {
  const bool works = Record(OpenUrlCall{.session = session, .url = Text(url), .flags = flags});
  if (!works || !open_.contains(session)) return Handle::kNull;
  Node node{.server = {}, .object = ToUtf8(url), .reply = {}};
  requests_.push_back({.server = {}, .object = node.object, .headers = {}, .body = {}});
  node.reply = TakeAnswer(node.object);
  return node.reply.sent ? NewHandle(std::move(node)) : Handle::kNull;
}

Internet::Block ScriptedInternet::Read(Handle request, std::size_t size) {
  const bool works = Record(ReadCall{.request = request, .size = size});
  const auto found = open_.find(request);
  if (!works || found == open_.end() || !found->second.reply.sent) return {};
  Node& node = found->second;
  Block block{.ok = true, .bytes = node.reply.bytes.substr(node.read, std::min(size, block_))};
  node.read += block.bytes.size();
  if (block.bytes.empty() && node.reply.cut) return {};
  return block;
}

void ScriptedInternet::Close(Handle handle) {
  Record(CloseCall{.handle = handle});
  open_.erase(handle);
}

}  // namespace quorvel
