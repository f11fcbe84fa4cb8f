#pragma once

#include <vector>

#include "hosts/excel/win32.h"
#include "platform/command_bars.h"

namespace quorvel {

// Holds a button face on the clipboard while it lives: as a bitmap and as Office's own pair of face and mask,
// so that its transparent pixels stay transparent. Afterwards the clipboard has its former content again.
class FaceClipboard {
 public:
  // Throws RuntimeError 521 (Can't open Clipboard) when another program keeps it open.
  explicit FaceClipboard(const Face& face);
  FaceClipboard(const FaceClipboard&) = delete;
  FaceClipboard& operator=(const FaceClipboard&) = delete;
  ~FaceClipboard();

 private:
  struct Saved {
    UINT format;
    HANDLE data;
  };

  void Save();
  void Restore();

  HWND owner_;
  std::vector<Saved> saved_;
};

}  // namespace quorvel
