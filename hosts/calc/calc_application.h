#pragma once

#include <com/sun/star/frame/XFrame.hpp>

#include "hosts/calc/main_thread.h"
#include "platform/memory/memory_command_bars.h"
#include "platform/workbook.h"

namespace quorvel {

// The application as the window in which a command was given shows it. The command bars are kept here and
// shown in every spreadsheet window (see frame_bars.h).
class CalcApplication : public Application {
 public:
  explicit CalcApplication(const Context& context) : context_(context) {}

  // The window of the next command. Null at its end.
  void SetFrame(const css::uno::Reference<css::frame::XFrame>& frame) { frame_ = frame; }

  // Null also when the window holds something else than a spreadsheet.
  [[nodiscard]] std::unique_ptr<Workbook> ActiveWorkbook() override;
  [[nodiscard]] CommandBars& Bars() override { return bars_; }

  [[nodiscard]] MemoryCommandBars& bars() { return bars_; }

 private:
  Context context_;
  css::uno::Reference<css::frame::XFrame> frame_;
  MemoryCommandBars bars_{{u"&Help"}};  // of the host's menus, the one that comes last
};

}  // namespace quorvel
