#include "hosts/excel/theme_scope.h"

namespace quorvel {

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&ThisModule), &module);
  return module;
}

ThemeScope::ThemeScope() {
  ACTCTXW manifest{};
  manifest.cbSize = sizeof(manifest);
  manifest.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  manifest.hModule = ThisModule();
  manifest.lpResourceName = MAKEINTRESOURCEW(2);
  context_ = CreateActCtxW(&manifest);
  active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
}

ThemeScope::~ThemeScope() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace quorvel
