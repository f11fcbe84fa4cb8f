#pragma once

#include <optional>
#include <span>

#include "platform/text.h"

namespace quorvel {

// The gateway's result codes: the whole reply is one of these.
inline constexpr TextView kSuccessCode = u"000";
inline constexpr TextView kNoCreditCode = u"001";
inline constexpr TextView kUnknownUserCode = u"002";
inline constexpr TextView kWrongPasswordCode = u"003";
inline constexpr TextView kLoginBlockedCode = u"004";
inline constexpr TextView kBadParametersCode = u"005";
inline constexpr TextView kBlockedCode = u"0110";
inline constexpr TextView kErrorCode = u"<ERROR>";

// Their texts, where the operation has none of its own.
inline constexpr TextView kNoBalance = u"No Balance. Please buy SMS";
inline constexpr TextView kInvalidUserName = u"Invalid User Name";
inline constexpr TextView kInvalidPassword = u"Invalid Password";
inline constexpr TextView kAccountBlocked = u"Your account has been blocked";

inline constexpr TextView kNoResponse = u"No Response!!!";
inline constexpr TextView kCheckConnection = u"Please Check Your Proxy Settings & Internet Connection!!!";

// What an operation shows for a result code.
struct CodeMessage {
  TextView code;
  TextView message;
};

// The message of the first row whose code is the whole reply; nothing when there is none.
[[nodiscard]] std::optional<TextView> FindMessage(std::span<const CodeMessage> table, TextView reply);

// `reply` without any "<SMS>" and "</SMS>".
[[nodiscard]] Text WithoutTags(TextView reply);
// The payload of a reply that begins with "<SMS>" and ends with "</SMS>"; nothing for another reply.
[[nodiscard]] std::optional<Text> OpenEnvelope(TextView reply);

}  // namespace quorvel
