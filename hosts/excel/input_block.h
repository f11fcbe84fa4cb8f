#pragma once

#include <vector>

#include "hosts/excel/win32.h"

namespace quorvel {

// While it lives, the thread's top-level windows take no input, `except` excepted: what a modal dialog does
// to its owner, for all windows of a host that has one per workbook. Those that took none before are left
// alone.
class InputBlock {
 public:
  explicit InputBlock(HWND except);
  InputBlock(const InputBlock&) = delete;
  InputBlock& operator=(const InputBlock&) = delete;
  ~InputBlock();

 private:
  std::vector<HWND> disabled_;
};

}  // namespace quorvel
