#pragma once

#include <memory>

#include "addin/Connect.h"
#include "hosts/excel/ado_recordset.h"
#include "hosts/excel/excel_workbook.h"
#include "hosts/excel/registry_settings.h"
#include "hosts/excel/system_code_page.h"
#include "hosts/excel/win32_forms.h"
#include "hosts/excel/windows_clock.h"
#include "hosts/excel/wininet_internet.h"
#include "platform/memory/memory_recordset.h"

namespace quorvel {

// Everything that lives from the host's connection to its disconnection, or to the end of the command that
// runs then, wired together.
struct ExcelSession : std::enable_shared_from_this<ExcelSession> {
  explicit ExcelSession(const ComPtr<IDispatch>& host)
      : application(host, [this] { return shared_from_this(); }),
        forms([this] { return application.Window(); }) {}

  ExcelApplication application;
  Win32Forms forms;
  RegistrySettings settings;
  WindowsClock clock;
  SystemCodePage code_page;
  WinInetInternet internet{code_page};
  MemoryRecordsets memory_recordsets{clock};
  AdoRecordsets recordsets{memory_recordsets, MakeAdoRecordset};
  Platform platform{application, forms, internet, settings, recordsets, clock, code_page};
  Connect connect{platform};
};

}  // namespace quorvel
