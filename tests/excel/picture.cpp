#include "tests/excel/picture.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel::tests {

namespace {

void Save(const std::string& path, const BITMAPINFOHEADER& header, const std::vector<char>& pixels) {
  BITMAPFILEHEADER file{};
  file.bfType = 0x4D42;  // "BM"
  file.bfOffBits = sizeof(file) + sizeof(header);
  file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size());
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file), sizeof(file));
  out.write(reinterpret_cast<const char*>(&header), sizeof(header));
  out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
  if (!out) throw std::runtime_error("cannot write " + path);
}

}  // namespace

void TakePicture(HWND window, const char* name) {
  const char* const folder = std::getenv("QUORVEL_PICTURES");
  if (folder == nullptr) return;
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  RECT area{};
  GetWindowRect(window, &area);
  const int width = static_cast<int>(area.right - area.left);
  const int height = static_cast<int>(area.bottom - area.top);
  const HDC source = GetWindowDC(window);
  const HDC memory = CreateCompatibleDC(source);
  const HBITMAP bitmap = CreateCompatibleBitmap(source, width, height);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
  SelectObject(memory, former);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 24;
  const int line = (width * 3 + 3) / 4 * 4;
  std::vector<char> pixels(static_cast<std::size_t>(line) * static_cast<std::size_t>(height));
  GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, source);
  Save(std::string(folder) + "\\" + name + ".bmp", info.bmiHeader, pixels);
}

}  // namespace quorvel::tests
