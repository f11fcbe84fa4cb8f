#include "hosts/calc/window_lock.h"

#include <algorithm>
#include <cppuhelper/implbase1.hxx>
#include <mutex>

#include "hosts/calc/bar_commands.h"
#include "hosts/calc/document_frames.h"
#include "hosts/calc/uno_errors.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

// Knows no command but the add-in's own, whose state the add-in itself tells. On any thread.
class Refusal : public cppu::WeakImplHelper1<css::frame::XDispatchProviderInterceptor> {
 public:
  using Provider = Reference<css::frame::XDispatchProvider>;
  using Dispatch = Reference<css::frame::XDispatch>;

  Dispatch SAL_CALL queryDispatch(const css::util::URL& url, const rtl::OUString& target,
                                  sal_Int32 flags) override {
    const Provider slave = getSlaveDispatchProvider();
    if (!slave.is() || !url.Complete.startsWith(ToUno(kProtocol))) return {};
    return slave->queryDispatch(url, target, flags);
  }
  css::uno::Sequence<Dispatch> SAL_CALL
  queryDispatches(const css::uno::Sequence<css::frame::DispatchDescriptor>& requests) override {
    css::uno::Sequence<Dispatch> dispatches(requests.getLength());
    std::transform(requests.begin(), requests.end(), dispatches.getArray(), [this](const auto& request) {
      return queryDispatch(request.FeatureURL, request.FrameName, request.SearchFlags);
    });
    return dispatches;
  }
  Provider SAL_CALL getSlaveDispatchProvider() override { return Get(slave_); }
  void SAL_CALL setSlaveDispatchProvider(const Provider& provider) override { Set(slave_, provider); }
  Provider SAL_CALL getMasterDispatchProvider() override { return Get(master_); }
  void SAL_CALL setMasterDispatchProvider(const Provider& provider) override { Set(master_, provider); }

 private:
  Provider Get(const Provider& provider) {
    const std::scoped_lock lock(mutex_);
    return provider;
  }
  void Set(Provider& provider, const Provider& value) {
    const std::scoped_lock lock(mutex_);
    provider = value;
  }

  std::mutex mutex_;
  Provider slave_;
  Provider master_;
};

}  // namespace

// Constructed by the other one, it unlocks what it has locked also when a window has gone meanwhile.
WindowLock::WindowLock(const Context& context, const Reference<css::frame::XFrame>& frame) : WindowLock() {
  for (const Reference<css::frame::XFrame>& shown : DocumentFrames(context, frame)) {
    const Reference<css::awt::XWindow> other = shown == frame ? nullptr : shown->getContainerWindow();
    const Locked& locked = locked_.emplace_back(Locked{other, {shown, UNO_QUERY_THROW}, new Refusal});
    locked.commands->registerDispatchProviderInterceptor(locked.refusal);
    if (other.is()) other->setEnable(false);
  }
}

WindowLock::~WindowLock() {
  for (const Locked& locked : locked_) {
    AtEntry("window", [&locked] {
      locked.commands->releaseDispatchProviderInterceptor(locked.refusal);
      if (locked.window.is()) locked.window->setEnable(true);
    });
  }
}

}  // namespace quorvel
