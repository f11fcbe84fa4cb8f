#include "hosts/calc/calc_forms.h"

#include <algorithm>
#include <array>
#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxResults.hpp>
#include <com/sun/star/awt/MessageBoxType.hpp>
#include <com/sun/star/awt/SystemPointer.hpp>
#include <com/sun/star/awt/XMessageBoxFactory.hpp>
#include <com/sun/star/awt/XPointer.hpp>

#include "hosts/calc/control_models.h"
#include "hosts/calc/input_form.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

constexpr std::int64_t kEventsInterval = 100;  // milliseconds; a repaint may cost five of them
constexpr int kButtonMask = 15;
constexpr int kIconMask = 0x70;

sal_Int32 BoxButtons(int style) {
  switch (style & kButtonMask) {
    case kOkCancel:
      return css::awt::MessageBoxButtons::BUTTONS_OK_CANCEL;
    case kYesNo:
      return css::awt::MessageBoxButtons::BUTTONS_YES_NO;
    default:
      return css::awt::MessageBoxButtons::BUTTONS_OK;
  }
}

// The application's information box has an OK button and no other.
css::awt::MessageBoxType BoxType(int style) {
  switch (style & kIconMask) {
    case kCritical:
      return css::awt::MessageBoxType_ERRORBOX;
    case kWarning:
      return css::awt::MessageBoxType_WARNINGBOX;
    case kInformation:
      if ((style & kButtonMask) == kOkOnly) return css::awt::MessageBoxType_INFOBOX;
      return css::awt::MessageBoxType_QUERYBOX;
    default:
      return (style & kButtonMask) == kOkOnly ? css::awt::MessageBoxType_MESSAGEBOX
                                              : css::awt::MessageBoxType_QUERYBOX;
  }
}

Answer BoxAnswer(sal_Int16 result, int style) {
  switch (result) {
    case css::awt::MessageBoxResults::OK:
      return Answer::kOk;
    case css::awt::MessageBoxResults::YES:
      return Answer::kYes;
    case css::awt::MessageBoxResults::NO:
      return Answer::kNo;
    default:  // closed by its frame
      break;
  }
  switch (style & kButtonMask) {
    case kOkCancel:
      return Answer::kCancel;
    case kYesNo:
      return Answer::kNo;
    default:
      return Answer::kOk;
  }
}

}  // namespace

CalcForms::CalcForms(const Context& context, const Clock& clock)
    : context_(context),
      clock_(clock),
      toolkit_(CreateService<css::awt::XToolkitExperimental>(context, "com.sun.star.awt.Toolkit")) {}

CalcForms::~CalcForms() = default;

void CalcForms::SetFrame(const Reference<css::frame::XFrame>& frame) {
  frame_ = frame;
  DropClosed();
}

DialogView::Peer CalcForms::Top() const {
  for (auto view = views_.rbegin(); view != views_.rend(); ++view) {
    if (!(*view)->closed() && (*view)->visible()) return (*view)->peer();
  }
  if (!frame_.is()) throw ObjectNotSet();
  return AskingCalc([this] { return DialogView::Peer(frame_->getContainerWindow(), UNO_QUERY_THROW); });
}

DialogView& CalcForms::Open(Form& form) {
  form.Load();
  return AskingCalc([&]() -> DialogView& {
    return *views_.emplace_back(std::make_unique<DialogView>(context_, form, Top()));
  });
}

void CalcForms::Show(Form& form) {
  for (const auto& view : views_) AskingCalc([&view] { view->StandBack(); });
  DialogView& view = Open(form);
  AskingCalc([&view] { view.Show(); });
}

void CalcForms::ShowModal(Form& form) {
  for (const auto& view : views_) view->Flush();
  DialogView& view = Open(form);
  try {
    if (form.loaded()) AskingCalc([&view] { view.Run(); });
  } catch (...) {
    Drop(view);
    throw;
  }
  Drop(view);
}

void CalcForms::Drop(const DialogView& view) {
  std::erase_if(views_, [&view](const auto& other) { return other.get() == &view; });
}

Answer CalcForms::MsgBox(TextView prompt, int style, TextView title) {
  for (const auto& view : views_) view->Flush();
  return AskingCalc([&] {
    const auto factory = CreateService<css::awt::XMessageBoxFactory>(context_, "com.sun.star.awt.Toolkit");
    const auto box = factory->createMessageBox(Top(), BoxType(style), BoxButtons(style), ToUno(title),
                                               ToUno(ShownText(prompt)));
    return BoxAnswer(box->execute(), style);
  });
}

Text CalcForms::InputBox(TextView prompt, TextView title, TextView initial) {
  InputForm form(prompt, title, initial);
  ShowModal(form);
  return form.answer();
}

// A pointer that keeps its shape is no reason to end anything.
void CalcForms::SetPointer(Pointer pointer) {
  AtEntry("pointer", [&] {
    const auto shape = CreateService<css::awt::XPointer>(context_, "com.sun.star.awt.Pointer");
    shape->setType(pointer == Pointer::kBusy ? css::awt::SystemPointer::WAIT
                                             : css::awt::SystemPointer::ARROW);
    for (const auto& view : views_) view->SetPointer(shape);
    if (!frame_.is()) return;
    DialogView::Peer(frame_->getContainerWindow(), UNO_QUERY_THROW)->setPointer(shape);
  });
}

void CalcForms::Yield() {
  if (clock_.Ticks() >= next_events_) RunEvents();
}

void CalcForms::RunEvents() {
  for (const auto& view : views_) view->Flush();
  DialogView* const busy = Busy();
  if (busy != nullptr) AtEntry("dialog", [busy] { busy->SetInput(false); });
  AtEntry("events", [this] { toolkit_->processEventsToIdle(); });
  if (busy != nullptr) AtEntry("dialog", [busy] { busy->SetInput(true); });
  DropClosed();
  next_events_ = clock_.Ticks() + kEventsInterval;
}

DialogView* CalcForms::Busy() const {
  if (views_.empty() || !views_.back()->running() || !views_.back()->busy()) return nullptr;
  return views_.back().get();
}

// Windows are not destroyed inside their own events, but here; a modal one by whoever runs it.
void CalcForms::DropClosed() {
  std::erase_if(views_, [](const auto& view) { return view->closed() && !view->running(); });
}

}  // namespace quorvel
