#include "account/account_queries.h"

#include "addin/common/alert.h"
#include "gateway/endpoints.h"
#include "gateway/replies.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u" S M S ";

}  // namespace

void GetBalance(const AddInContext& context) {
  Gateway& gateway = context.gateway;
  const Text reply =
      gateway.HttpPostForm(kBalancePath, "user=" + gateway.User() + "&passwd=" + gateway.ScrambledPassword());
  if (const auto balance = OpenEnvelope(reply)) {
    ShowAlert(context.platform.forms, u"Your credit balance is " + *balance, kInformation, kTitle);
  } else {
    ShowAlert(context.platform.forms, u"Error occured while retrieving SMS balance credits", kCritical,
              kTitle);
  }
}

void GetModes(const AddInContext& context) {
  const Text url = context.session.ServerBaseUrl + FromUtf8(kModesPath);
  const auto modes = OpenEnvelope(context.gateway.HttpGetUrl(url));
  if (modes) context.settings.Write(kModesSetting, *modes);
  ShowAlert(context.platform.forms,
            modes ? u"Mode of submissions has been downloaded"
                  : u"Error occured while retrieving mode of submissions",
            kInformation, kTitle);
}

}  // namespace quorvel
