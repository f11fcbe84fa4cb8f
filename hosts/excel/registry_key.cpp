#include "hosts/excel/registry_key.h"

#include "hosts/excel/wide.h"

namespace quorvel {

namespace {

LSTATUS Write(HKEY root, const Text& key, const Text& name, DWORD type, const void* data, std::size_t size) {
  HKEY opened = nullptr;
  LSTATUS status = RegCreateKeyExW(root, Wide(key), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE,
                                   nullptr, &opened, nullptr);
  if (status != ERROR_SUCCESS) return status;
  status =
      RegSetValueExW(opened, Wide(name), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
  RegCloseKey(opened);
  return status;
}

}  // namespace

std::optional<Text> ReadRegistryText(HKEY root, const Text& key, const Text& name) {
  DWORD bytes = 0;
  LSTATUS status = RegGetValueW(root, Wide(key), Wide(name), RRF_RT_REG_SZ, nullptr, nullptr, &bytes);
  std::wstring value;
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    value.resize(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    status = RegGetValueW(root, Wide(key), Wide(name), RRF_RT_REG_SZ, nullptr, value.data(), &bytes);
    if (status != ERROR_SUCCESS) continue;
    value.resize(bytes / sizeof(wchar_t));
    if (value.ends_with(L'\0')) value.pop_back();
    return FromWide(value);
  }
  return std::nullopt;
}

LSTATUS WriteRegistryText(HKEY root, const Text& key, const Text& name, const Text& value) {
  return Write(root, key, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

LSTATUS WriteRegistryNumber(HKEY root, const Text& key, const Text& name, std::uint32_t value) {
  return Write(root, key, name, REG_DWORD, &value, sizeof(value));
}

LSTATUS DeleteRegistryKey(HKEY root, const Text& key) {
  const LSTATUS status = RegDeleteTreeW(root, Wide(key));
  return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

}  // namespace quorvel
