#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <com/sun/star/util/URL.hpp>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "addin/Connect.h"
#include "hosts/calc/bar_commands.h"
#include "hosts/calc/calc_application.h"
#include "hosts/calc/calc_forms.h"
#include "hosts/common/curl_internet.h"
#include "hosts/common/sqlite_settings.h"
#include "hosts/common/system_clock.h"
#include "platform/memory/memory_recordset.h"
#include "platform/platform.h"

namespace quorvel {

// The add-in and its platform in this process. Everything on the main thread but what says otherwise.
class CalcHost : public std::enable_shared_from_this<CalcHost> {
 public:
  // Connects the add-in.
  explicit CalcHost(const Context& context);
  CalcHost(const CalcHost&) = delete;
  CalcHost& operator=(const CalcHost&) = delete;

  // Puts the add-in's bars into a window, if it is one of spreadsheets. Harmless when they are there.
  void Equip(const css::uno::Reference<css::frame::XFrame>& frame);

  // Whether there is such a command. On any thread.
  [[nodiscard]] bool Knows(const rtl::OUString& url) const;
  // Runs the command soon, on the main thread, for that window; a disabled one does nothing, and all are
  // while one runs. On any thread.
  void Dispatch(const rtl::OUString& url, const css::uno::Reference<css::frame::XFrame>& frame);

  // Listeners are told the command's state at once and at every change, until they are removed. On any
  // thread.
  void AddListener(const css::util::URL& url,
                   const css::uno::Reference<css::frame::XStatusListener>& listener);
  void RemoveListener(const css::util::URL& url,
                      const css::uno::Reference<css::frame::XStatusListener>& listener);

 private:
  struct Listener {
    css::util::URL url;
    css::uno::Reference<css::frame::XStatusListener> listener;
  };

  void Run(const rtl::OUString& url, const css::uno::Reference<css::frame::XFrame>& frame);
  // Tells the listeners which commands are enabled now.
  void PublishStates();
  [[nodiscard]] css::frame::FeatureStateEvent State(const css::util::URL& url) const;

  Context context_;
  SystemClock clock_;
  CalcForms forms_;
  CurlInternet internet_;
  SqliteSettings settings_;
  MemoryRecordsets recordsets_;
  CalcApplication application_;
  Platform platform_;
  Connect connect_;
  bool running_ = false;

  mutable std::mutex mutex_;  // guards what follows
  std::map<rtl::OUString, bool> enabled_;
  std::vector<Listener> listeners_;
};

}  // namespace quorvel
