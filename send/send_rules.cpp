#include "send/send_rules.h"

#include <array>

#include "gateway/replies.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u" S M S ";
constexpr TextView kLongText = u"SMS message contains more than 160 characters for the row(";
constexpr TextView kLongTextQuestion = u"Would you like to send more than 160 characters.";

// In the order of Layout.
constexpr std::array kRules = {
    SendRules{Layout::kStandard, false, false, 160, kLongText, kLongTextQuestion, kTitle, kNoBalance, kTitle,
              kTitle},
    SendRules{Layout::kUnicode, true, true, 70, u"SMS message contains more than 70 characters for the row(",
              u"Would you like to send more than 70 characters.", u"S M S",
              u"No Balance. Please buy SMS credits to continue sending SMS.", u"S M S Application",
              u"SMS Application"},
    SendRules{Layout::kRecords, false, false, 160, kLongText, kLongTextQuestion, kTitle,
              u"No Balance. Please buy SMS.", kTitle, kTitle},
};

}  // namespace

const SendRules& RulesOf(Layout layout) {
  return kRules[static_cast<std::size_t>(layout)];
}

}  // namespace quorvel
