#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi {

/// What `getToken` takes.
struct AuthCodeBean {
    /// Without it the call is refused.
    std::optional<std::string> authCode;

    BASEAPI_FIELDS(AuthCodeBean, authCode)
};

/// The user as the carrier knows them.
struct OrgUserInfo {
    std::optional<std::string> carrierUserId;
    std::optional<std::string> carrierUserName;
    std::optional<std::string> carrierUserGrade;
    std::optional<std::string> carrierUserStatus;
    std::optional<std::string> carrierMobile;
    std::optional<std::string> carrierPayType;

    BASEAPI_FIELDS(OrgUserInfo, carrierUserId, carrierUserName, carrierUserGrade, carrierUserStatus,
                   carrierMobile, carrierPayType)
};

/// What `getToken` answers.
struct UserAuthResp : BaseResponse {
    /// The token, exactly as `CloudInstance.token` takes it.
    std::optional<std::string> accessToken;
    std::optional<std::int64_t> innerUserId;
    std::optional<OrgUserInfo> data;

    BASEAPI_FIELDS_OF(UserAuthResp, BaseResponse, accessToken, innerUserId, data)
};

}  // namespace baseapi
