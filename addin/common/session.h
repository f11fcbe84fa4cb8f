#pragma once

#include <cstdint>

#include "platform/text.h"

namespace quorvel {

// What the add-in knows while it is loaded. Nothing of it is kept beyond that but what
// account/settings_store.h lists.
struct Session {
  // The gateway server. The values before the first login are placeholders that lead nowhere.
  Text ServerHost;
  std::int16_t ServerPort = 0;
  // Base of the page that is fetched rather than posted to; stays as it was at connection.
  Text ServerBaseUrl;

  Text UserName;
  Text Password;  // in memory only
  bool LoggedIn = false;

  std::int16_t ProxyType = 0;  // 0 the platform's configuration, 1 direct, 3 named proxy
  Text ProxyName;
  std::int16_t ProxyPort = 0;
  Text ProxyUserName;
  Text ProxyUserPWD;
};

}  // namespace quorvel
