#include "hosts/calc/uno_text.h"

#include <algorithm>

namespace quorvel {

namespace {

// The string class's unit is a 16-bit integer type of its own, so units are copied one by one.
template <typename Units>
rtl::OUString Copy(const Units& units) {
  rtl_uString* const copy = rtl_uString_alloc(static_cast<sal_Int32>(units.size()));
  std::copy(units.begin(), units.end(), copy->buffer);
  return {copy, SAL_NO_ACQUIRE};
}

}  // namespace

rtl::OUString ToUno(TextView text) {
  return Copy(text);
}

rtl::OUString ToUno(std::string_view ascii) {
  return Copy(ascii);
}

Text FromUno(const rtl::OUString& text) {
  return {text.getStr(), text.getStr() + text.getLength()};
}

}  // namespace quorvel
