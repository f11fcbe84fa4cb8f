#include "hosts/excel/log.h"

#include <array>
#include <cstdio>
#include <string>

#include "hosts/excel/wide.h"
#include "hosts/excel/win32.h"

namespace quorvel {

namespace {

constexpr LONGLONG kMostBytes = 256LL * 1024;  // then the log starts again

std::string TimeStamp() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<char, 32> text{};
  const int length =
      std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", int{now.wYear},
                    int{now.wMonth}, int{now.wDay}, int{now.wHour}, int{now.wMinute}, int{now.wSecond});
  return {text.data(), static_cast<std::size_t>(length)};
}

HANDLE OpenLog() {
  std::array<wchar_t, MAX_PATH> folder{};
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder.data()))) {
    return INVALID_HANDLE_VALUE;
  }
  std::wstring path = folder.data();
  path += L"\\Quorvel";
  CreateDirectoryW(path.c_str(), nullptr);
  path += L"\\Quorvel.log";
  return CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

void Append(const std::string& line) {
  const HANDLE file = OpenLog();
  if (file == INVALID_HANDLE_VALUE) return;
  LARGE_INTEGER size{};
  if (GetFileSizeEx(file, &size) != 0 && size.QuadPart > kMostBytes) {
    FILE_END_OF_FILE_INFO empty{};
    SetFileInformationByHandle(file, FileEndOfFileInfo, &empty, sizeof(empty));
  }
  DWORD written = 0;
  WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  CloseHandle(file);
}

}  // namespace

void Log(std::string_view where, std::string_view what) noexcept {
  try {
    std::string line = TimeStamp();
    line.append(" [").append(where).append("] ").append(what).append("\r\n");
    OutputDebugStringW(Wide(FromUtf8(line)));
    Append(line);
  } catch (const std::exception&) {
    OutputDebugStringW(L"Quorvel: a log line was lost\r\n");
  }
}

}  // namespace quorvel
