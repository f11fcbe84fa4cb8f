#include "hosts/excel/face_clipboard.h"

#include <cstring>

#include "hosts/excel/log.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr int kTries = 20;
constexpr DWORD kPause = 10;  // milliseconds

bool OpenPatiently(HWND owner) {
  for (int attempt = 0; attempt < kTries; ++attempt) {
    if (OpenClipboard(owner) != FALSE) return true;
    Sleep(kPause);
  }
  return false;
}

// Formats whose handle is no block of memory. The system makes the bitmap ones again from the others.
bool IsMemory(UINT format) {
  switch (format) {
    case CF_BITMAP:
    case CF_PALETTE:
    case CF_METAFILEPICT:
    case CF_ENHMETAFILE:
    case CF_OWNERDISPLAY:
    case CF_DSPBITMAP:
    case CF_DSPMETAFILEPICT:
    case CF_DSPENHMETAFILE:
      return false;
    default:
      return (format < CF_PRIVATEFIRST || format > CF_PRIVATELAST) &&
             (format < CF_GDIOBJFIRST || format > CF_GDIOBJLAST);
  }
}

HGLOBAL CopyOf(const void* data, std::size_t size) {
  const HGLOBAL copy = GlobalAlloc(GMEM_MOVEABLE, size);
  if (copy == nullptr) return nullptr;
  void* const target = GlobalLock(copy);
  if (target == nullptr) {
    GlobalFree(copy);
    return nullptr;
  }
  std::memcpy(target, data, size);
  GlobalUnlock(copy);
  return copy;
}

HGLOBAL CopyOf(HGLOBAL source) {
  const void* const data = GlobalLock(source);
  if (data == nullptr) return nullptr;
  const HGLOBAL copy = CopyOf(data, GlobalSize(source));
  GlobalUnlock(source);
  return copy;
}

// A bottom-up bitmap of 32 bits a pixel, with its header.
struct Bitmap {
  BITMAPINFOHEADER header{};
  std::uint32_t pixels[Face::kSize * Face::kSize]{};
};

template <class Pixel>
HGLOBAL MakeBitmap(const Face& face, Pixel&& pixel) {
  Bitmap bitmap;
  bitmap.header.biSize = sizeof(bitmap.header);
  bitmap.header.biWidth = Face::kSize;
  bitmap.header.biHeight = Face::kSize;
  bitmap.header.biPlanes = 1;
  bitmap.header.biBitCount = 32;
  bitmap.header.biCompression = BI_RGB;
  for (std::size_t y = 0; y < Face::kSize; ++y) {
    for (std::size_t x = 0; x < Face::kSize; ++x) {
      const std::uint32_t colour = face.pixels[y * Face::kSize + x];
      bitmap.pixels[(Face::kSize - 1 - y) * Face::kSize + x] = pixel(colour);
    }
  }
  return CopyOf(&bitmap, sizeof(bitmap));
}

bool IsTransparent(std::uint32_t colour) {
  return colour >> 24 < 0x80;
}

// Where there is no mask, transparent pixels get the grey of a button.
std::uint32_t Opaque(std::uint32_t colour) {
  return IsTransparent(colour) ? 0xC0C0C0 : colour & 0xFFFFFF;
}

std::uint32_t Mask(std::uint32_t colour) {
  return IsTransparent(colour) ? 0xFFFFFF : 0;
}

void Put(UINT format, HGLOBAL data) {
  if (data != nullptr && SetClipboardData(format, data) == nullptr) GlobalFree(data);
}

}  // namespace

FaceClipboard::FaceClipboard(const Face& face)
    : owner_(CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
  if (!OpenPatiently(owner_)) {
    DestroyWindow(owner_);
    throw RuntimeError(521, u"Can't open Clipboard");
  }
  Save();
  EmptyClipboard();
  Put(CF_DIB, MakeBitmap(face, Opaque));
  Put(RegisterClipboardFormatW(L"Toolbar Button Face"), MakeBitmap(face, Opaque));
  Put(RegisterClipboardFormatW(L"Toolbar Button Mask"), MakeBitmap(face, Mask));
  CloseClipboard();
}

FaceClipboard::~FaceClipboard() {
  if (OpenPatiently(owner_)) {
    Restore();
    CloseClipboard();
  } else {
    for (const Saved& saved : saved_) GlobalFree(saved.data);
    Log("Clipboard", "its former content could not be put back");
  }
  DestroyWindow(owner_);
}

void FaceClipboard::Save() {
  for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format)) {
    const HANDLE data = IsMemory(format) ? GetClipboardData(format) : nullptr;
    const HGLOBAL copy = data == nullptr ? nullptr : CopyOf(data);
    if (copy != nullptr) saved_.push_back({format, copy});
  }
}

void FaceClipboard::Restore() {
  EmptyClipboard();
  for (const Saved& saved : saved_) Put(saved.format, saved.data);
}

}  // namespace quorvel
