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

// Formats whose handle is no block of memory. The system makes the bitmap ones again from the others, and the
// older metafile from the newer.
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

HGLOBAL CopyOfMemory(HGLOBAL source) {
  const void* const data = GlobalLock(source);
  if (data == nullptr) return nullptr;
  const HGLOBAL copy = CopyOf(data, GlobalSize(source));
  GlobalUnlock(source);
  return copy;
}

void Free(UINT format, HANDLE data) {
  if (format == CF_ENHMETAFILE) {
    DeleteEnhMetaFile(static_cast<HENHMETAFILE>(data));
  } else {
    GlobalFree(data);
  }
}

HANDLE CopyOf(UINT format) {
  if (format != CF_ENHMETAFILE && !IsMemory(format)) return nullptr;
  const HANDLE data = GetClipboardData(format);
  if (data == nullptr) return nullptr;
  return format == CF_ENHMETAFILE ? CopyEnhMetaFileW(static_cast<HENHMETAFILE>(data), nullptr)
                                  : CopyOfMemory(data);
}

constexpr std::size_t kSize = Face::kSize;

BITMAPINFOHEADER Header(WORD bits_per_pixel) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof(header);
  header.biWidth = kSize;
  header.biHeight = kSize;
  header.biPlanes = 1;
  header.biBitCount = bits_per_pixel;
  header.biCompression = BI_RGB;
  return header;
}

// Rows run from the bottom, each a multiple of four bytes long.
struct FaceBitmap {
  BITMAPINFOHEADER header = Header(24);
  std::uint8_t rows[kSize][kSize][3]{};
};

struct MaskBitmap {
  BITMAPINFOHEADER header = Header(1);
  std::uint32_t colours[2] = {0x000000, 0xFFFFFF};
  std::uint8_t rows[kSize][4]{};
};

bool IsTransparent(std::uint32_t colour) {
  return colour >> 24 < 0x80;
}

// Where there is no mask, transparent pixels get the grey of a button.
FaceBitmap Opaque(const Face& face) {
  FaceBitmap bitmap;
  for (std::size_t at = 0; at < kSize * kSize; ++at) {
    const std::uint32_t colour = IsTransparent(face.pixels[at]) ? 0xC0C0C0 : face.pixels[at];
    std::memcpy(bitmap.rows[kSize - 1 - at / kSize][at % kSize], &colour, 3);
  }
  return bitmap;
}

// White where the button shows through.
MaskBitmap Mask(const Face& face) {
  MaskBitmap bitmap;
  for (std::size_t at = 0; at < kSize * kSize; ++at) {
    const std::size_t x = at % kSize;
    if (!IsTransparent(face.pixels[at])) continue;
    std::uint8_t& eight = bitmap.rows[kSize - 1 - at / kSize][x / 8];
    eight = static_cast<std::uint8_t>(eight | 0x80 >> x % 8);
  }
  return bitmap;
}

void Put(UINT format, HANDLE data) {
  if (data != nullptr && SetClipboardData(format, data) == nullptr) Free(format, data);
}

template <class Bitmap>
void PutBitmap(UINT format, const Bitmap& bitmap) {
  Put(format, CopyOf(&bitmap, sizeof(bitmap)));
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
  PutBitmap(CF_DIB, Opaque(face));
  PutBitmap(RegisterClipboardFormatW(L"Toolbar Button Face"), Opaque(face));
  PutBitmap(RegisterClipboardFormatW(L"Toolbar Button Mask"), Mask(face));
  CloseClipboard();
}

FaceClipboard::~FaceClipboard() {
  if (OpenPatiently(owner_)) {
    Restore();
    CloseClipboard();
  } else {
    for (const Saved& saved : saved_) Free(saved.format, saved.data);
    Log("Clipboard", "its former content could not be put back");
  }
  DestroyWindow(owner_);
}

void FaceClipboard::Save() {
  for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format)) {
    const HANDLE copy = CopyOf(format);
    if (copy != nullptr) saved_.push_back({format, copy});
  }
}

void FaceClipboard::Restore() {
  EmptyClipboard();
  for (const Saved& saved : saved_) Put(saved.format, saved.data);
}

}  // namespace quorvel
