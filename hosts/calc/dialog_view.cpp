#include "hosts/calc/dialog_view.h"

#include <algorithm>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Selection.hpp>
#include <com/sun/star/awt/XControlModel.hpp>
#include <com/sun/star/awt/XStyleSettings.hpp>
#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XUnitConversion.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/util/MeasureUnit.hpp>
#include <utility>

#include "hosts/calc/control_models.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr unsigned Bit(Property property) {
  return 1U << static_cast<unsigned>(property);
}

// In the order in which they are written: a choice needs its items, the focus a usable control.
constexpr Property kWritten[] = {Property::kBounds,  Property::kCaption, Property::kEnabled,
                                 Property::kVisible, Property::kItems,   Property::kListIndex,
                                 Property::kText,    Property::kValue};

// What the user can change of a control, to be shown again as the form has it.
unsigned UserChanges(ControlKind kind) {
  switch (kind) {
    case ControlKind::kTextBox:
      return Bit(Property::kText);
    case ControlKind::kComboBox:
      return Bit(Property::kListIndex);
    case ControlKind::kCheckBox:
    case ControlKind::kOptionButton:
      return Bit(Property::kValue);
    default:
      return 0;
  }
}

bool IsReadOnlyBox(const Control& control) {
  return control.kind() == ControlKind::kTextBox && static_cast<const TextBox&>(control).read_only();
}

// A text to be read, not a field.
bool IsNotice(const Control& control) {
  return IsReadOnlyBox(control) && static_cast<const TextBox&>(control).style() == TextBox::Style::kMultiLine;
}

// Of boxes of several lines, some toolkits draw no border.
bool NeedsBorder(const Control& control) {
  if (control.kind() != ControlKind::kTextBox || IsNotice(control)) return false;
  const TextBox::Style style = static_cast<const TextBox&>(control).style();
  return style == TextBox::Style::kMultiLine || style == TextBox::Style::kRichText;
}

rtl::OUString BorderName(const Control& control) {
  return ToUno(control.name()) + "_border";
}

bool TakesFocus(const Control& control) {
  constexpr ControlKind kKinds[] = {ControlKind::kTextBox, ControlKind::kButton, ControlKind::kCheckBox,
                                    ControlKind::kOptionButton, ControlKind::kComboBox};
  return std::find(std::begin(kKinds), std::end(kKinds), control.kind()) != std::end(kKinds) &&
         control.usable() && !IsReadOnlyBox(control);
}

// Where the form put the focus, or else the first control to do something with.
const Control* FirstFocus(const Form& form) {
  if (form.active_control() != nullptr) return form.active_control();
  const auto first = std::find_if(form.controls().begin(), form.controls().end(),
                                  [](const Control* control) { return TakesFocus(*control); });
  return first == form.controls().end() ? nullptr : *first;
}

// Gives the control the dialog's own background.
void BlendIn(const Reference<css::awt::XControl>& control) {
  const Reference<css::awt::XStyleSettingsSupplier> style(control->getPeer(), UNO_QUERY);
  if (!style.is()) return;
  const sal_Int32 colour = style->getStyleSettings()->getDialogColor();
  SetProperty(control->getModel(), "BackgroundColor", colour);
}

Reference<css::awt::XWindow> Window(const Reference<css::uno::XInterface>& control) {
  return {control, UNO_QUERY_THROW};
}

}  // namespace

DialogView::DialogView(const Context& context, Form& form, const Peer& owner)
    : context_(context), form_(&form), owner_(owner), link_(std::make_shared<UserActionsLink>()) {
  const auto model =
      CreateService<css::awt::XControlModel>(context, "com.sun.star.awt.UnoControlDialogModel");
  SetProperty(model, "Title", ToUno(form.caption()));
  SetProperty(model, "Width", sal_Int32{form.width()});
  SetProperty(model, "Height", sal_Int32{form.height()});
  SetProperty(model, "Closeable", true);
  SetProperty(model, "Moveable", true);
  dialog_ = CreateService<css::awt::XControl>(context, "com.sun.star.awt.UnoControlDialog");
  dialog_->setModel(model);
  AddControls();
  Centre(owner);
  Window(dialog_)->setVisible(false);
  dialog_->createPeer(CreateService<css::awt::XToolkit>(context, "com.sun.star.awt.Toolkit"), owner);
  link_->actions = this;
  ListenToWindow(dialog_, link_);
  for (Control* control : form.controls()) Attach(*control);
  focus_ = FirstFocus(form);
  form.AttachView(this);
}

DialogView::~DialogView() {
  if (form_ != nullptr) form_->AttachView(nullptr);
  link_->actions = nullptr;
  AtEntry("dialog", [this] { Reference<css::lang::XComponent>(dialog_, UNO_QUERY_THROW)->dispose(); });
}

void DialogView::AddControls() {
  const Reference<css::lang::XMultiServiceFactory> factory(dialog_->getModel(), UNO_QUERY_THROW);
  const Reference<css::container::XNameContainer> container(factory, UNO_QUERY_THROW);
  int tab_index = 0;
  for (const Control* control : form_->controls()) {
    const rtl::OUString service = ModelService(*control);
    if (service.isEmpty()) continue;
    const ControlModel model(factory->createInstance(service), UNO_QUERY_THROW);
    FillModel(*control, tab_index++, model);
    container->insertByName(ToUno(control->name()), css::uno::Any(model));
    if (!NeedsBorder(*control)) continue;
    const ControlModel border(factory->createInstance("com.sun.star.awt.UnoControlGroupBoxModel"),
                              UNO_QUERY_THROW);
    SetProperty(border, "TabIndex", static_cast<sal_Int16>(tab_index++));
    SetProperty(border, "EnableVisible", control->shown());
    container->insertByName(BorderName(*control), css::uno::Any(border));
  }
}

void DialogView::Attach(Control& control) {
  if (control.kind() == ControlKind::kTimer) return StartTimer(control);
  const Reference<css::awt::XControlContainer> container(dialog_, UNO_QUERY_THROW);
  const Reference<css::awt::XControl> shown = container->getControl(ToUno(control.name()));
  if (!shown.is()) return;
  controls_[&control] = shown;
  if (NeedsBorder(control)) PlaceBorder(control, container->getControl(BorderName(control)));
  if (IsNotice(control)) BlendIn(shown);
  ListenTo(shown, control, link_);
}

// One pixel around the box, which no dialog unit says exactly; a group's line is drawn one pixel inside its
// right and lower edge.
void DialogView::PlaceBorder(const Control& control, const Reference<css::awt::XControl>& border) {
  const css::awt::Rectangle box = Window(Find(control))->getPosSize();
  Window(border)->setPosSize(box.X - 1, box.Y - 1, box.Width + 3, box.Height + 3, css::awt::PosSize::POSSIZE);
  borders_[&control] = border;
}

// The model's position counts from the owner's client area.
void DialogView::Centre(const Peer& owner) {
  const css::awt::Rectangle area = Window(owner)->getPosSize();
  const Reference<css::awt::XUnitConversion> units(owner, UNO_QUERY_THROW);
  const css::awt::Size size =
      units->convertSizeToLogic({area.Width, area.Height}, css::util::MeasureUnit::APPFONT);
  SetProperty(dialog_->getModel(), "PositionX", (size.Width - form_->width()) / 2);
  SetProperty(dialog_->getModel(), "PositionY", (size.Height - form_->height()) / 2);
}

void DialogView::Show() {
  modeless_ = true;
  Window(owner_)->setEnable(false);
  Window(dialog_)->setVisible(true);
}

bool DialogView::visible() const {
  return Reference<css::awt::XWindow2>(dialog_, UNO_QUERY_THROW)->isVisible();
}

void DialogView::SetInput(bool input) {
  Window(dialog_)->setEnable(input);
}

void DialogView::Run() {
  const Reference<css::awt::XDialog> dialog(dialog_, UNO_QUERY_THROW);
  running_ = true;
  while (form_ != nullptr) {
    close_asked_ = false;
    opened_ = false;
    Flush();
    dialog->execute();
    const bool stood_back = std::exchange(standing_back_, false);
    if (form_ != nullptr && !close_asked_ && !stood_back) Cancel();
  }
  running_ = false;
}

// The toolkit's cancel button ends the dialog before it tells of it; and without a display a dialog ends at
// once, unseen. Either way nobody is left to answer.
void DialogView::Cancel() {
  Act(nullptr, [this] {
    for (Control* control : form_->controls()) {
      if (control->kind() != ControlKind::kButton) continue;
      auto& button = static_cast<Button&>(*control);
      if (button.role() == Button::Role::kCancel) return button.UserPress();
    }
  });
  if (form_ != nullptr) form_->Unload();
}

DialogView::Peer DialogView::peer() const {
  return dialog_->getPeer();
}

void DialogView::StandBack() {
  if (!running_ || form_ == nullptr || std::exchange(standing_back_, true)) return;
  Reference<css::awt::XDialog>(dialog_, UNO_QUERY_THROW)->endExecute();
}

void DialogView::SetPointer(const Reference<css::awt::XPointer>& pointer) {
  peer()->setPointer(pointer);
}

Reference<css::awt::XControl> DialogView::Find(const Control& control) const {
  const auto found = controls_.find(&control);
  return found == controls_.end() ? Reference<css::awt::XControl>() : found->second;
}

void DialogView::ControlChanged(const Control& control, Property property) {
  if (property == Property::kTimer) return StartTimer(control);
  changes_[&control] |= Bit(property);
  if (control.kind() != ControlKind::kFrame) return;
  for (const Control* inside : form_->controls()) {
    if (inside->frame() == &control) changes_[inside] |= Bit(property);
  }
}

void DialogView::FocusMoved(const Control& control) {
  focus_ = &control;
}

void DialogView::Closed() {
  form_ = nullptr;
  link_->actions = nullptr;
  timers_.clear();
  changes_.clear();
  focus_ = nullptr;
  AtEntry("dialog", [this] {
    if (modeless_) {
      Window(dialog_)->setVisible(false);
      Window(owner_)->setEnable(true);
    } else {
      Reference<css::awt::XDialog>(dialog_, UNO_QUERY_THROW)->endExecute();
    }
  });
}

void DialogView::StartTimer(const Control& control) {
  auto& timer = static_cast<Timer&>(*form_->Find(control.name()));
  timers_.erase(&control);
  if (timer.interval() <= 0) return;
  timers_[&control] = std::make_unique<MainThreadTimer>(context_, std::chrono::milliseconds(timer.interval()),
                                                        [this, &timer] { Tick(timer); });
}

void DialogView::Flush() {
  if (form_ == nullptr || changes_.empty()) return WriteFocus();
  writing_ = true;
  AtEntry("dialog", [this] {
    for (const auto& [control, properties] : std::exchange(changes_, {})) Write(*control, properties);
  });
  writing_ = false;
  WriteFocus();
}

void DialogView::Write(const Control& control, Properties properties) {
  const Reference<css::awt::XControl> shown = Find(control);
  if (!shown.is()) return;
  const ControlModel model(shown->getModel(), UNO_QUERY_THROW);
  for (const Property property : kWritten) {
    if ((properties & Bit(property)) != 0) UpdateModel(control, property, model);
  }
  if (const auto border = borders_.find(&control); border != borders_.end()) {
    SetProperty(border->second->getModel(), "EnableVisible", control.shown());
  }
  if ((properties & Bit(Property::kSelectAll)) != 0) {
    const Reference<css::awt::XTextComponent> text(shown, UNO_QUERY_THROW);
    text->setSelection({0, text->getText().getLength()});
  }
}

// A window that is not open yet cannot take the focus; the wish is kept until it is.
void DialogView::WriteFocus() {
  if (form_ == nullptr || focus_ == nullptr || !opened_) return;
  const Reference<css::awt::XControl> shown = Find(*std::exchange(focus_, nullptr));
  if (!shown.is()) return;
  AtEntry("focus", [&shown] { Window(shown)->setFocus(); });
}

void DialogView::Act(Control* control, const std::function<void()>& action) {
  if (form_ == nullptr || writing_) return;
  switch (handling_) {
    case Handling::kNone:
      return Handle(Handling::kUser, action);
    case Handling::kUser:
      if (control != nullptr) changes_[control] |= UserChanges(control->kind());
      return;
    case Handling::kTimer:
      waiting_.emplace_back(control, action);
      return;
  }
}

void DialogView::Tick(Timer& timer) {
  if (form_ == nullptr || handling_ != Handling::kNone) return;
  Handle(Handling::kTimer, [&timer] { timer.Tick(); });
  for (const auto& [control, action] : std::exchange(waiting_, {})) Act(control, action);
}

void DialogView::Handle(Handling kind, const std::function<void()>& handler) {
  handling_ = kind;
  AtEntry("form", handler);
  handling_ = Handling::kNone;
  Flush();
}

void DialogView::Focused(Control& control) {
  if (focus_ == nullptr && handling_ != Handling::kUser) {
    Act(&control, [&control] { control.UserFocus(); });
  }
}

void DialogView::CloseAsked() {
  close_asked_ = true;
  Act(nullptr, [this] { form_->UserClose(); });
}

void DialogView::Opened() {
  opened_ = true;
  WriteFocus();
}

}  // namespace quorvel
