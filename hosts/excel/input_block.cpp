#include "hosts/excel/input_block.h"

namespace quorvel {

namespace {

BOOL CALLBACK AddUsable(HWND window, LPARAM windows) {
  if (IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

}  // namespace

InputBlock::InputBlock(HWND except) {
  EnumThreadWindows(GetCurrentThreadId(), AddUsable, reinterpret_cast<LPARAM>(&disabled_));
  std::erase(disabled_, except);
  for (const HWND window : disabled_) EnableWindow(window, FALSE);
}

InputBlock::~InputBlock() {
  for (const HWND window : disabled_) {
    if (IsWindow(window) != FALSE) EnableWindow(window, TRUE);
  }
}

}  // namespace quorvel
