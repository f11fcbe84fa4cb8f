#include "hosts/calc/close_guard.h"

#include <com/sun/star/frame/TerminationVetoException.hpp>
#include <com/sun/star/util/CloseVetoException.hpp>
#include <cppuhelper/implbase1.hxx>

#include "hosts/calc/document_frames.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

constexpr const char* kReason = "The SMS add-in is at work.";

class TerminateVeto : public cppu::WeakImplHelper1<css::frame::XTerminateListener> {
 public:
  void SAL_CALL queryTermination(const css::lang::EventObject& /*event*/) override {
    throw css::frame::TerminationVetoException(rtl::OUString::createFromAscii(kReason), nullptr);
  }
  void SAL_CALL notifyTermination(const css::lang::EventObject& /*event*/) override {}
  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}
};

class CloseVeto : public cppu::WeakImplHelper1<css::util::XCloseListener> {
 public:
  void SAL_CALL queryClosing(const css::lang::EventObject& /*source*/, sal_Bool /*owner*/) override {
    throw css::util::CloseVetoException(rtl::OUString::createFromAscii(kReason), nullptr);
  }
  void SAL_CALL notifyClosing(const css::lang::EventObject& /*source*/) override {}
  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}
};

}  // namespace

CloseGuard::CloseGuard(const Context& context)
    : desktop_(CreateService<css::frame::XDesktop>(context, "com.sun.star.frame.Desktop")),
      terminate_veto_(new TerminateVeto),
      close_veto_(new CloseVeto) {}

// Constructed by the other one, it lets go of what it holds also when a window has gone meanwhile.
CloseGuard::CloseGuard(const Context& context, const css::uno::Reference<css::frame::XFrame>& frame)
    : CloseGuard(context) {
  desktop_->addTerminateListener(terminate_veto_);
  Guard(DocumentIn(frame));
  for (const auto& shown : DocumentFrames(context, frame)) Guard(shown);
}

CloseGuard::~CloseGuard() {
  AtEntry("close guard", [this] {
    desktop_->removeTerminateListener(terminate_veto_);
    for (const auto& guarded : guarded_) guarded->removeCloseListener(close_veto_);
  });
}

void CloseGuard::Guard(const css::uno::Reference<css::uno::XInterface>& closeable) {
  const css::uno::Reference<css::util::XCloseBroadcaster> guarded(closeable, css::uno::UNO_QUERY);
  if (!guarded.is()) return;
  guarded->addCloseListener(close_veto_);
  guarded_.push_back(guarded);
}

}  // namespace quorvel
