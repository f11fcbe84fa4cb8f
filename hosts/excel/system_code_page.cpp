#include "hosts/excel/system_code_page.h"

#include "hosts/excel/automation_error.h"
#include "hosts/excel/wide.h"
#include "hosts/excel/win32.h"

namespace quorvel {

namespace {

[[noreturn]] void ThrowLastError() {
  throw ErrorOfResult(HRESULT_FROM_WIN32(GetLastError()));
}

}  // namespace

std::string SystemCodePage::Encode(TextView text) const {
  if (text.empty()) return {};
  const Text copy(text);
  const int units = static_cast<int>(copy.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, Wide(copy), units, nullptr, 0, nullptr, nullptr);
  if (size == 0) ThrowLastError();
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, Wide(copy), units, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

Text SystemCodePage::Decode(std::string_view bytes) const {
  if (bytes.empty()) return {};
  const int length = static_cast<int>(bytes.size());
  const int units = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
  if (units == 0) ThrowLastError();
  std::wstring wide(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, wide.data(), units);
  return FromWide(wide);
}

}  // namespace quorvel
