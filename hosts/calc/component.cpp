// What the application creates by name: the job that it runs when it starts, and the handler of the add-in's
// protocol.

#include <com/sun/star/document/XDocumentEventBroadcaster.hpp>
#include <com/sun/star/document/XDocumentEventListener.hpp>
#include <com/sun/star/frame/XDesktop.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFramesSupplier.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/implbase4.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "hosts/calc/calc_host.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

// The add-in of this process: the application creates its parts by name, and here they meet. Null before the
// start and after the end.
struct Process {
  std::mutex mutex;
  std::shared_ptr<CalcHost> host;
};

Process& ThisProcess() {
  static Process process;
  return process;
}

std::shared_ptr<CalcHost> Host() {
  const std::scoped_lock lock(ThisProcess().mutex);
  return ThisProcess().host;
}

// A host is made and taken apart outside the lock: whoever waits for that may hold the application's own.
void SetHost(std::shared_ptr<CalcHost> host) {
  const std::scoped_lock lock(ThisProcess().mutex);
  ThisProcess().host.swap(host);
}

// Takes the add-in apart while the application's services are still there.
class EndListener : public cppu::WeakImplHelper1<css::frame::XTerminateListener> {
 public:
  void SAL_CALL queryTermination(const css::lang::EventObject& /*event*/) override {}
  void SAL_CALL notifyTermination(const css::lang::EventObject& /*event*/) override { SetHost(nullptr); }
  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}
};

// Equips every spreadsheet window that opens, and every view that a window changes to.
class ViewListener : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
 public:
  explicit ViewListener(const Context& context) : context_(context) {}

  void SAL_CALL documentEventOccured(const css::document::DocumentEvent& event) override {
    if (event.EventName != "OnViewCreated" || !event.ViewController.is()) return;
    AtEntry("view", [&] {
      const Reference<css::frame::XFrame> frame = event.ViewController->getFrame();
      Post(context_, [frame] {
        if (const auto host = Host()) host->Equip(frame);
      });
    });
  }
  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

 private:
  Context context_;
};

class StartJob : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo> {
 public:
  static constexpr const char* kName = "quorvel.calc.StartJob";

  explicit StartJob(const Context& context) : context_(context) {}

  Any SAL_CALL execute(const Sequence<css::beans::NamedValue>& /*arguments*/) override {
    AtEntry("start", [this] {
      if (Host()) return;
      SetHost(std::make_shared<CalcHost>(context_));
      const auto desktop = CreateService<css::frame::XDesktop>(context_, "com.sun.star.frame.Desktop");
      desktop->addTerminateListener(new EndListener);
      CreateService<css::document::XDocumentEventBroadcaster>(context_,
                                                              "com.sun.star.frame.GlobalEventBroadcaster")
          ->addDocumentEventListener(new ViewListener(context_));
      EquipOpenWindows(desktop);
    });
    return {};
  }

  OUString SAL_CALL getImplementationName() override { return OUString::createFromAscii(kName); }
  sal_Bool SAL_CALL supportsService(const OUString& name) override {
    return cppu::supportsService(this, name);
  }
  Sequence<OUString> SAL_CALL getSupportedServiceNames() override {
    const OUString service("com.sun.star.task.Job");
    return {&service, 1};
  }

 private:
  // Somebody may have opened documents before the add-in was asked to start.
  static void EquipOpenWindows(const Reference<css::frame::XDesktop>& desktop) {
    const Reference<css::frame::XFramesSupplier> supplier(desktop, css::uno::UNO_QUERY_THROW);
    const auto frames = supplier->getFrames();
    for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
      Reference<css::frame::XFrame> frame;
      frames->getByIndex(i) >>= frame;
      Host()->Equip(frame);
    }
  }

  Context context_;
};

// One for each window.
class ProtocolHandler : public cppu::WeakImplHelper4<css::frame::XDispatchProvider, css::frame::XDispatch,
                                                     css::lang::XInitialization, css::lang::XServiceInfo> {
 public:
  static constexpr const char* kName = "quorvel.calc.ProtocolHandler";

  void SAL_CALL initialize(const Sequence<Any>& arguments) override {
    if (arguments.hasElements()) arguments[0] >>= frame_;
  }

  Reference<css::frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL& url,
                                                          const OUString& /*target*/,
                                                          sal_Int32 /*flags*/) override {
    Reference<css::frame::XDispatch> dispatch;
    WithHost([&](CalcHost& host) {
      if (host.Knows(url.Complete)) dispatch = this;
    });
    return dispatch;
  }

  Sequence<Reference<css::frame::XDispatch>> SAL_CALL
  queryDispatches(const Sequence<css::frame::DispatchDescriptor>& requests) override {
    Sequence<Reference<css::frame::XDispatch>> dispatches(requests.getLength());
    auto* dispatch = dispatches.getArray();
    for (const auto& request : requests) {
      *dispatch++ = queryDispatch(request.FeatureURL, request.FrameName, request.SearchFlags);
    }
    return dispatches;
  }

  void SAL_CALL dispatch(const css::util::URL& url,
                         const Sequence<css::beans::PropertyValue>& /*arguments*/) override {
    WithHost([&](CalcHost& host) { host.Dispatch(url.Complete, frame_); });
  }

  void SAL_CALL addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                  const css::util::URL& url) override {
    WithHost([&](CalcHost& host) { host.AddListener(url, listener); });
  }

  void SAL_CALL removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                     const css::util::URL& url) override {
    WithHost([&](CalcHost& host) { host.RemoveListener(url, listener); });
  }

  OUString SAL_CALL getImplementationName() override { return OUString::createFromAscii(kName); }
  sal_Bool SAL_CALL supportsService(const OUString& name) override {
    return cppu::supportsService(this, name);
  }
  Sequence<OUString> SAL_CALL getSupportedServiceNames() override {
    const OUString service("com.sun.star.frame.ProtocolHandler");
    return {&service, 1};
  }

 private:
  template <typename Use>
  void WithHost(const Use& use) {
    AtEntry("dispatch", [&] {
      if (const auto host = Host()) use(*host);
    });
  }

  Reference<css::frame::XFrame> frame_;
};

}  // namespace

}  // namespace quorvel

// The names that the package's .components file gives. The application releases what it gets.
extern "C" {

SAL_DLLPUBLIC_EXPORT css::uno::XInterface* QuorvelStartJob(css::uno::XComponentContext* context,
                                                           const css::uno::Sequence<css::uno::Any>&) {
  return cppu::acquire(new quorvel::StartJob(context));
}

SAL_DLLPUBLIC_EXPORT css::uno::XInterface* QuorvelProtocolHandler(css::uno::XComponentContext*,
                                                                  const css::uno::Sequence<css::uno::Any>&) {
  return cppu::acquire(new quorvel::ProtocolHandler);
}
}
