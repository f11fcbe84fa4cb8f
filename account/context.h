#pragma once

#include "account/settings_store.h"
#include "addin/common/progress.h"
#include "addin/common/session.h"
#include "gateway/gateway.h"
#include "platform/platform.h"

namespace quorvel {

// What the forms share: the host, and the add-in's own state. Everything outlives every form.
struct AddInContext {
  const Platform& platform;
  Session& session;
  Progress& progress;
  Gateway& gateway;
  SettingsStore& settings;
};

}  // namespace quorvel
