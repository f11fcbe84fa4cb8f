#include "hosts/calc/calc_host.h"

#include <algorithm>
#include <com/sun/star/frame/XModuleManager.hpp>
#include <cstdlib>

#include "hosts/calc/close_guard.h"
#include "hosts/calc/frame_bars.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"
#include "hosts/calc/window_lock.h"

namespace quorvel {

namespace {

using css::uno::Reference;

bool ShowsSpreadsheets(const Context& context, const Reference<css::frame::XFrame>& frame) {
  try {
    const auto modules =
        CreateService<css::frame::XModuleManager>(context, "com.sun.star.frame.ModuleManager");
    return modules->identify(frame) == "com.sun.star.sheet.SpreadsheetDocument";
  } catch (const css::uno::Exception&) {  // a window that belongs to no module
    return false;
  }
}

}  // namespace

CalcHost::CalcHost(const Context& context)
    : context_(context),
      forms_(context, clock_),
      internet_([this] {
        forms_.RunEvents();
        return false;
      }),
      settings_(DefaultSettingsFile(std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME"))),
      recordsets_(clock_),
      application_(context),
      platform_{application_, forms_, internet_, settings_, recordsets_, clock_, Windows1252()},
      connect_(platform_) {
  connect_.OnConnection();
  PublishStates();
  Log("host", "connected");
}

void CalcHost::Equip(const Reference<css::frame::XFrame>& frame) {
  if (frame.is() && ShowsSpreadsheets(context_, frame)) {
    ShowBars(context_, frame, BarLayouts(application_.bars()));
  }
}

bool CalcHost::Knows(const rtl::OUString& url) const {
  const std::scoped_lock lock(mutex_);
  return enabled_.count(url) != 0;
}

void CalcHost::Dispatch(const rtl::OUString& url, const Reference<css::frame::XFrame>& frame) {
  Post(context_, [weak = weak_from_this(), url, frame] {
    if (const auto host = weak.lock()) host->Run(url, frame);
  });
}

void CalcHost::Run(const rtl::OUString& url, const Reference<css::frame::XFrame>& frame) {
  if (running_) return;
  for (const BarLayout& layout : BarLayouts(application_.bars())) {
    for (const BarCommand& command : layout.commands) {
      if (ToUno(command.url) != url || !command.control->enabled) continue;
      const CloseGuard guard(context_, frame);
      const WindowLock lock(context_, frame);
      running_ = true;
      PublishStates();
      application_.SetFrame(frame);
      forms_.SetFrame(frame);
      AtEntry("command", [&] { application_.bars().Click({command.bar, command.control->caption}); });
      forms_.SetFrame({});
      application_.SetFrame({});
      running_ = false;
      PublishStates();
      return;
    }
  }
}

void CalcHost::PublishStates() {
  std::vector<Listener> listeners;
  {
    const std::scoped_lock lock(mutex_);
    for (const BarLayout& layout : BarLayouts(application_.bars())) {
      for (const BarCommand& command : layout.commands) {
        enabled_[ToUno(command.url)] = command.control->enabled && !running_;
      }
    }
    listeners = listeners_;
  }
  for (const Listener& entry : listeners) {
    AtEntry("status", [&] { entry.listener->statusChanged(State(entry.url)); });
  }
}

css::frame::FeatureStateEvent CalcHost::State(const css::util::URL& url) const {
  const std::scoped_lock lock(mutex_);
  const auto known = enabled_.find(url.Complete);
  css::frame::FeatureStateEvent event;
  event.FeatureURL = url;
  event.IsEnabled = known != enabled_.end() && known->second;
  return event;
}

void CalcHost::AddListener(const css::util::URL& url,
                           const Reference<css::frame::XStatusListener>& listener) {
  {
    const std::scoped_lock lock(mutex_);
    listeners_.push_back({url, listener});
  }
  listener->statusChanged(State(url));
}

void CalcHost::RemoveListener(const css::util::URL& url,
                              const Reference<css::frame::XStatusListener>& listener) {
  const std::scoped_lock lock(mutex_);
  std::erase_if(listeners_, [&](const Listener& entry) {
    return entry.listener == listener && entry.url.Complete == url.Complete;
  });
}

}  // namespace quorvel
