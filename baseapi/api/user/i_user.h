#pragma once

#include <optional>

#include "baseapi/api/user/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi {

/// Sign-in. Reached through `CloudInstance::shared().getUserImpl()`; callable from any thread. Requests,
/// callbacks and refusals are as `IFile` says.
class IUser {
  public:
    virtual ~IUser() = default;

    /// Exchanges an authorisation code for a token. `authCode` must be there. The token is stored nowhere:
    /// the host sets `CloudInstance::token` to the answer's `accessToken`.
    virtual void getToken(std::optional<AuthCodeBean> bean, NetworkCallback<UserAuthResp> onCallback) = 0;

    BASEAPI_OPERATIONS(IUser, getToken)
};

}  // namespace baseapi
