#include "hosts/excel/reading_order.h"

#include <vector>

#include "hosts/excel/wide.h"
#include "hosts/excel/win32.h"

namespace quorvel {

bool StartsRightToLeft(const Text& text) {
  std::vector<WORD> types(text.size());
  if (text.empty() ||
      GetStringTypeW(CT_CTYPE2, Wide(text), static_cast<int>(text.size()), types.data()) == FALSE) {
    return false;
  }
  for (const WORD type : types) {
    if (type == C2_LEFTTORIGHT) return false;
    if (type == C2_RIGHTTOLEFT) return true;
  }
  return false;
}

}  // namespace quorvel
