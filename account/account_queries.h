#pragma once

#include "account/context.h"

namespace quorvel {

// Shows the credit balance of the account. The caller has seen to the login.
void GetBalance(const AddInContext& context);

// Downloads the gateway's list of submission modes and keeps it. Needs no login.
void GetModes(const AddInContext& context);

}  // namespace quorvel
