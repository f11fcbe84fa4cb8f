#include "hosts/console/dry_run.h"

#include <string>

#include "platform/code_page.h"

namespace quorvel {

namespace {

constexpr std::string_view kMask = "********";
constexpr std::string_view kSecretParameters[] = {"&passwd=", "&FromEmailPwd="};

std::string WithoutSecrets(std::string body) {
  for (const std::string_view parameter : kSecretParameters) {
    for (std::size_t at = body.find(parameter); at != std::string::npos; at = body.find(parameter, at)) {
      at += parameter.size();
      body.replace(at, body.find('&', at) - at, kMask);
    }
  }
  return body;
}

}  // namespace

void PrintDryRun(std::string_view path, std::string_view body, Output& output) {
  const std::string shown = WithoutSecrets(std::string(body));
  output.Print({path, "\n", shown, "\n"});
  output.result()["path"] = path;
  output.result()["body"] = ToUtf8(Windows1252().Decode(shown));
}

}  // namespace quorvel
