#pragma once

#include <string>
#include <string_view>

#include "addin/common/progress.h"
#include "addin/common/session.h"
#include "platform/platform.h"
#include "platform/rnd.h"

namespace quorvel {

// Every exchange with the SMS gateway: one call, one request, the whole answer as text. Nothing is retried
// and nothing is reported here: whatever fails gives an empty answer. Bodies are bytes of the host's code
// page.
class Gateway {
 public:
  Gateway(const Platform& platform, const Session& session, Progress& progress)
      : platform_(platform), session_(session), progress_(progress) {}

  // Posts a form-encoded body to `path` on the session's server, through the session's proxy.
  [[nodiscard]] Text HttpPostForm(std::string_view path, std::string_view body);
  // Fetches a full URL through the platform's own proxy configuration.
  [[nodiscard]] Text HttpGetUrl(TextView url);

  // Form encoding of every byte of the code page but 0-9, A-Z and a-z; a blank is "+". Takes the progress
  // window's cancel button out of reach: what is encoded last before a post can no longer be cancelled.
  [[nodiscard]] std::string UrlEncode(TextView text);
  // `text` in the code page, not encoded.
  [[nodiscard]] std::string Bytes(TextView text) const { return platform_.code_page.Encode(text); }

  // The session's user name and password, trimmed, as the operations send them.
  [[nodiscard]] std::string User() const;
  [[nodiscard]] std::string EncodedUser();
  [[nodiscard]] std::string PlainPassword();
  // Throws RuntimeError 5 for a password that cannot be scrambled.
  [[nodiscard]] std::string ScrambledPassword();

 private:
  [[nodiscard]] Internet::SessionOptions PostSession() const;
  [[nodiscard]] Internet::ConnectOptions PostConnection() const;
  [[nodiscard]] std::string ReadAll(Internet::Handle request, std::size_t block_size);

  const Platform& platform_;
  const Session& session_;
  Progress& progress_;
  Rnd rnd_;
};

}  // namespace quorvel
