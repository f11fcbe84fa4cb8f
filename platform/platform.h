#pragma once

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/forms.h"
#include "platform/internet.h"
#include "platform/recordset.h"
#include "platform/settings.h"
#include "platform/workbook.h"

namespace quorvel {

// What a host brings, wired in one place per host and handed to the add-in at connection. All of it outlives
// the add-in.
struct Platform {
  Application& application;
  Forms& forms;
  Internet& internet;
  Settings& settings;
  RecordsetFactory& recordsets;
  const Clock& clock;
  const CodePage& code_page;
};

}  // namespace quorvel
