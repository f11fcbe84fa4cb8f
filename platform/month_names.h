#pragma once

#include <array>

#include "platform/text.h"

namespace quorvel {

// English month names, January first; the first three letters are the abbreviation.
inline constexpr std::array<TextView, 12> kMonthNames = {u"January",   u"February", u"March",    u"April",
                                                         u"May",       u"June",     u"July",     u"August",
                                                         u"September", u"October",  u"November", u"December"};

}  // namespace quorvel
