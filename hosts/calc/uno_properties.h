#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string_view>

#include "hosts/calc/uno_text.h"

namespace quorvel {

// Both throw UNO exceptions.
inline css::uno::Any GetProperty(const css::uno::Reference<css::uno::XInterface>& object,
                                 std::string_view name) {
  return css::uno::Reference<css::beans::XPropertySet>(object, css::uno::UNO_QUERY_THROW)
      ->getPropertyValue(ToUno(name));
}

template <typename Value>
void SetProperty(const css::uno::Reference<css::uno::XInterface>& object, std::string_view name,
                 const Value& value) {
  css::uno::Reference<css::beans::XPropertySet>(object, css::uno::UNO_QUERY_THROW)
      ->setPropertyValue(ToUno(name), css::uno::Any(value));
}

// A service of the application; throws a UNO exception when it has none of that name and interface.
template <typename Interface>
css::uno::Reference<Interface> CreateService(const css::uno::Reference<css::uno::XComponentContext>& context,
                                             std::string_view name) {
  return {context->getServiceManager()->createInstanceWithContext(ToUno(name), context),
          css::uno::UNO_QUERY_THROW};
}

}  // namespace quorvel
