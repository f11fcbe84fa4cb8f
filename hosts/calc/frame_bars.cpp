#include "hosts/calc/frame_bars.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XIndexContainer.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <com/sun/star/lang/XSingleComponentFactory.hpp>
#include <com/sun/star/ui/ItemStyle.hpp>
#include <com/sun/star/ui/ItemType.hpp>
#include <com/sun/star/ui/XModuleUIConfigurationManagerSupplier.hpp>
#include <com/sun/star/ui/XUIConfigurationManager.hpp>
#include <com/sun/star/ui/XUIElementSettings.hpp>

#include "hosts/calc/control_models.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::beans::PropertyValue;
using css::container::XIndexAccess;
using css::container::XIndexContainer;
using css::frame::XLayoutManager;
using css::ui::XUIElementSettings;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;

constexpr std::string_view kMenuBar = "private:resource/menubar/menubar";
constexpr TextView kToolbarPrefix = u"private:resource/toolbar/custom_quorvel_";
constexpr TextView kHelpMenu = u".uno:HelpMenu";

using Item = std::vector<PropertyValue>;

PropertyValue Named(std::string_view name, const Any& value) {
  PropertyValue property;
  property.Name = ToUno(name);
  property.Value = value;
  return property;
}

void Insert(const Reference<XIndexContainer>& container, sal_Int32 position, const Item& item) {
  const Sequence<PropertyValue> properties(item.data(), static_cast<sal_Int32>(item.size()));
  container->insertByIndex(position, Any(properties));
}

void FillContainer(const Reference<XIndexContainer>& container, const BarLayout& layout) {
  for (const BarCommand& command : layout.commands) {
    if (command.control->begin_group) {
      Insert(container, container->getCount(), {Named("Type", Any(css::ui::ItemType::SEPARATOR_LINE))});
    }
    Insert(container, container->getCount(),
           {Named("CommandURL", Any(ToUno(command.url))),
            Named("Label", Any(ToUno(Mnemonic(command.control->caption)))),
            Named("Type", Any(css::ui::ItemType::DEFAULT)),
            Named("Style", Any(static_cast<sal_Int16>(css::ui::ItemStyle::ICON | css::ui::ItemStyle::TEXT))),
            Named("IsVisible", Any(true))});
  }
}

Reference<XIndexContainer> NewContainer(const Context& context) {
  const auto supplier = CreateService<css::ui::XModuleUIConfigurationManagerSupplier>(
      context, "com.sun.star.ui.ModuleUIConfigurationManagerSupplier");
  const auto manager = supplier->getUIConfigurationManager("com.sun.star.sheet.SpreadsheetDocument");
  return {manager->createSettings(), UNO_QUERY_THROW};
}

// Made without settings, which keeps the application from storing it; they are handed over afterwards.
void ShowToolbar(const Context& context, const Reference<XLayoutManager>& manager, const BarLayout& layout) {
  const OUString url = ToUno(Text(kToolbarPrefix) + layout.caption);
  if (manager->getElement(url).is()) return;
  manager->createElement(url);
  const Reference<XUIElementSettings> element(manager->getElement(url), UNO_QUERY_THROW);
  const Reference<XIndexContainer> settings = NewContainer(context);
  SetProperty(settings, "UIName", ToUno(layout.caption));
  FillContainer(settings, layout);
  element->setSettings(Reference<XIndexAccess>(settings, UNO_QUERY));
}

OUString CommandOf(const Any& item) {
  Sequence<PropertyValue> properties;
  item >>= properties;
  OUString command;
  for (const PropertyValue& property : properties) {
    if (property.Name == "CommandURL") property.Value >>= command;
  }
  return command;
}

void ShowMenu(const Context& context, const Reference<XLayoutManager>& manager, const BarLayout& layout) {
  const OUString menu_command = ToUno(Text(kProtocol) + u"menu");
  const Reference<XUIElementSettings> menu_bar(manager->getElement(ToUno(kMenuBar)), UNO_QUERY);
  if (!menu_bar.is()) return;  // a window without menus
  SetProperty(menu_bar, "Persistent", false);
  const Reference<XIndexContainer> settings(menu_bar->getSettings(true), UNO_QUERY_THROW);
  sal_Int32 position = settings->getCount();
  for (sal_Int32 i = 0; i < settings->getCount(); ++i) {
    const OUString command = CommandOf(settings->getByIndex(i));
    if (command == menu_command) return;
    if (command == ToUno(kHelpMenu)) position = i;
  }
  const Reference<css::lang::XSingleComponentFactory> factory(settings, UNO_QUERY_THROW);
  const Reference<XIndexContainer> popup(factory->createInstanceWithContext(context), UNO_QUERY_THROW);
  FillContainer(popup, layout);
  Insert(settings, position,
         {Named("CommandURL", Any(menu_command)), Named("Label", Any(ToUno(Mnemonic(layout.caption)))),
          Named("Type", Any(css::ui::ItemType::DEFAULT)),
          Named("ItemDescriptorContainer", Any(Reference<XIndexAccess>(popup, UNO_QUERY)))});
  menu_bar->setSettings(Reference<XIndexAccess>(settings, UNO_QUERY));
}

}  // namespace

void ShowBars(const Context& context, const Reference<css::frame::XFrame>& frame,
              const std::vector<BarLayout>& layouts) {
  Reference<XLayoutManager> manager;
  GetProperty(frame, "LayoutManager") >>= manager;
  if (!manager.is()) return;
  for (const BarLayout& layout : layouts) {
    (layout.menu ? ShowMenu : ShowToolbar)(context, manager, layout);
  }
}

}  // namespace quorvel
