#include "hosts/excel/window_scope.h"

#include "hosts/excel/windows10.h"

namespace quorvel {

namespace {

using GetContextFunction = DPI_AWARENESS_CONTEXT WINAPI(HWND);
using SetContextFunction = DPI_AWARENESS_CONTEXT WINAPI(DPI_AWARENESS_CONTEXT);

// Null where threads have no such context.
DPI_AWARENESS_CONTEXT Enter(DPI_AWARENESS_CONTEXT context) {
  static const auto set = Windows10<SetContextFunction>("SetThreadDpiAwarenessContext");
  return set == nullptr || context == nullptr ? nullptr : set(context);
}

DPI_AWARENESS_CONTEXT ContextOf(HWND window) {
  static const auto get = Windows10<GetContextFunction>("GetWindowDpiAwarenessContext");
  return get == nullptr || window == nullptr ? nullptr : get(window);
}

}  // namespace

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&ThisModule), &module);
  return module;
}

WindowScope::WindowScope(HWND owner) : former_(Enter(ContextOf(owner))) {
  ACTCTXW manifest{};
  manifest.cbSize = sizeof(manifest);
  manifest.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  manifest.hModule = ThisModule();
  manifest.lpResourceName = MAKEINTRESOURCEW(2);
  style_ = CreateActCtxW(&manifest);
  active_ = style_ != INVALID_HANDLE_VALUE && ActivateActCtx(style_, &cookie_) != FALSE;
}

WindowScope::~WindowScope() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (style_ != INVALID_HANDLE_VALUE) ReleaseActCtx(style_);
  Enter(former_);
}

}  // namespace quorvel
