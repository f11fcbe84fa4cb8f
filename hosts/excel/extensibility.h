#pragma once

#include "hosts/excel/win32.h"

namespace quorvel {

// The interface by which Office hosts load an add-in.
struct IDTExtensibility2 : public IDispatch {  // NOLINT(cppcoreguidelines-virtual-class-destructor): COM
  // `mode`: 0 after start-up, 1 at start-up, 2 by another program, 3 from the command line. `instance` is the
  // host's entry for this add-in. `custom` may be null, here and below.
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, int mode, IDispatch* instance,
                                                 SAFEARRAY** custom) = 0;
  // `mode`: 0 the host shuts down, 1 the user unloaded the add-in.
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(int mode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

inline constexpr IID kExtensibility = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

// The members' numbers for hosts that call by IDispatch.
enum class ExtensibilityMember : DISPID {
  kOnConnection = 1,
  kOnDisconnection = 2,
  kOnAddInsUpdate = 3,
  kOnStartupComplete = 4,
  kOnBeginShutdown = 5
};

}  // namespace quorvel
