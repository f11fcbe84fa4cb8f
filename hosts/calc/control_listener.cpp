#include "hosts/calc/control_listener.h"

#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XComboBox.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase5.hxx>
#include <rtl/ref.hxx>

#include "hosts/calc/control_models.h"
#include "hosts/calc/uno_errors.h"

namespace quorvel {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using Link = std::shared_ptr<UserActionsLink>;

class ControlListener : public cppu::WeakImplHelper5<css::awt::XActionListener, css::awt::XItemListener,
                                                     css::awt::XTextListener, css::awt::XFocusListener,
                                                     css::awt::XMouseListener> {
 public:
  ControlListener(Control& control, Link link) : control_(control), link_(std::move(link)) {}

  void SAL_CALL actionPerformed(const css::awt::ActionEvent& /*event*/) override {
    Act([this] { static_cast<Button&>(control_).UserPress(); });
  }

  void SAL_CALL itemStateChanged(const css::awt::ItemEvent& event) override {
    Act([this, selected = event.Selected] { Chosen(selected); });
  }

  void SAL_CALL textChanged(const css::awt::TextEvent& event) override {
    Act([this, source = event.Source] {
      const Reference<css::awt::XTextComponent> box(source, UNO_QUERY_THROW);
      const Text text = FromUno(box->getText());
      if (control_.kind() == ControlKind::kComboBox) return Typed(static_cast<ComboBox&>(control_), text);
      auto& text_box = static_cast<TextBox&>(control_);
      const bool same = text == ShownText(text_box.text());  // keeps the line ends that the form wrote
      if (!same) text_box.UserType(TypedText(text));
    });
  }

  void SAL_CALL focusGained(const css::awt::FocusEvent& /*event*/) override {
    AtEntry("focus", [this] {
      if (link_->actions != nullptr) link_->actions->Focused(control_);
    });
  }
  void SAL_CALL focusLost(const css::awt::FocusEvent& /*event*/) override {}

  void SAL_CALL mousePressed(const css::awt::MouseEvent& /*event*/) override {}
  void SAL_CALL mouseReleased(const css::awt::MouseEvent& /*event*/) override {
    if (control_.kind() != ControlKind::kTextBox) return;
    Act([this] { static_cast<TextBox&>(control_).UserClick(); });
  }
  void SAL_CALL mouseEntered(const css::awt::MouseEvent& /*event*/) override {}
  void SAL_CALL mouseExited(const css::awt::MouseEvent& /*event*/) override {}

  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

 private:
  void Act(const std::function<void()>& action) {
    AtEntry("dialog", [this, &action] {
      if (link_->actions != nullptr) link_->actions->Act(&control_, action);
    });
  }

  void Chosen(sal_Int32 selected) {
    switch (control_.kind()) {
      case ControlKind::kCheckBox:
        return static_cast<CheckBox&>(control_).UserSet(selected != 0);
      case ControlKind::kOptionButton:
        if (selected != 0) static_cast<OptionButton&>(control_).UserChoose();
        return;
      case ControlKind::kComboBox:
        if (selected >= 0 && selected < static_cast<ComboBox&>(control_).list_count()) {
          static_cast<ComboBox&>(control_).UserSelect(selected);
        }
        return;
      default:
        return;
    }
  }

  // The toolkit tells of a chosen item twice: as the item and as its text.
  static void Typed(ComboBox& combo, const Text& text) {
    if (text != combo.text()) combo.UserType(text);
  }

  Control& control_;  // outlives the link's actions
  Link link_;
};

class WindowListener : public cppu::WeakImplHelper1<css::awt::XTopWindowListener> {
 public:
  explicit WindowListener(Link link) : link_(std::move(link)) {}

  void SAL_CALL windowOpened(const css::lang::EventObject& /*event*/) override { Tell(&UserActions::Opened); }
  void SAL_CALL windowClosing(const css::lang::EventObject& /*event*/) override {
    Tell(&UserActions::CloseAsked);
  }
  void SAL_CALL windowClosed(const css::lang::EventObject& /*event*/) override {}
  void SAL_CALL windowMinimized(const css::lang::EventObject& /*event*/) override {}
  void SAL_CALL windowNormalized(const css::lang::EventObject& /*event*/) override {}
  void SAL_CALL windowActivated(const css::lang::EventObject& /*event*/) override {
    Tell(&UserActions::Opened);
  }
  void SAL_CALL windowDeactivated(const css::lang::EventObject& /*event*/) override {}
  void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

 private:
  void Tell(void (UserActions::*what)()) {
    AtEntry("window", [this, what] {
      if (link_->actions != nullptr) (link_->actions->*what)();
    });
  }

  Link link_;
};

}  // namespace

void ListenTo(const Reference<css::awt::XControl>& toolkit_control, Control& control, const Link& link) {
  const rtl::Reference<ControlListener> listener(new ControlListener(control, link));
  const Reference<css::awt::XWindow> window(toolkit_control, UNO_QUERY_THROW);
  window->addFocusListener(listener.get());
  window->addMouseListener(listener.get());
  switch (control.kind()) {
    case ControlKind::kButton:
      Reference<css::awt::XButton>(toolkit_control, UNO_QUERY_THROW)->addActionListener(listener.get());
      return;
    case ControlKind::kTextBox:
      Reference<css::awt::XTextComponent>(toolkit_control, UNO_QUERY_THROW)->addTextListener(listener.get());
      return;
    case ControlKind::kCheckBox:
      Reference<css::awt::XCheckBox>(toolkit_control, UNO_QUERY_THROW)->addItemListener(listener.get());
      return;
    case ControlKind::kOptionButton:
      Reference<css::awt::XRadioButton>(toolkit_control, UNO_QUERY_THROW)->addItemListener(listener.get());
      return;
    case ControlKind::kComboBox:
      if (static_cast<const ComboBox&>(control).style() == ComboBox::Style::kList) {
        Reference<css::awt::XListBox>(toolkit_control, UNO_QUERY_THROW)->addItemListener(listener.get());
        return;
      }
      Reference<css::awt::XComboBox>(toolkit_control, UNO_QUERY_THROW)->addItemListener(listener.get());
      Reference<css::awt::XTextComponent>(toolkit_control, UNO_QUERY_THROW)->addTextListener(listener.get());
      return;
    default:
      return;
  }
}

void ListenToWindow(const Reference<css::awt::XControl>& dialog, const Link& link) {
  Reference<css::awt::XTopWindow>(dialog, UNO_QUERY_THROW)->addTopWindowListener(new WindowListener(link));
}

}  // namespace quorvel
