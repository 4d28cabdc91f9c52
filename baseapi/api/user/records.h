#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- sign-in

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

// ---- users

/// A user of the organisation.
struct UserInfo {
    std::optional<std::int64_t> id;
    std::optional<std::string> name;
    std::optional<std::string> userId;
    std::optional<std::int64_t> deptId;
    std::optional<std::string> deptName;
    std::optional<std::string> mobile;
    std::optional<std::int64_t> role;
    std::optional<std::int64_t> status;

    BASEAPI_FIELDS(UserInfo, id, name, userId, deptId, deptName, mobile, role, status)
};

/// What `getUserById` takes.
struct GetUserByIdBean {
    /// It goes into the path.
    std::optional<std::string> userId;

    BASEAPI_FIELDS(GetUserByIdBean, userId)
};

/// What `getUserById` answers.
struct GetUsersByIdResponse : BaseResponse {
    std::optional<UserInfo> data;

    BASEAPI_FIELDS_OF(GetUsersByIdResponse, BaseResponse, data)
};

/// What `getUserList` takes.
struct GetUserListBean {
    std::optional<std::string> deptId;
    /// It must be there.
    std::optional<bool> isDirect;
    /// A number as a text; how many are passed over.
    std::optional<std::string> offset;
    /// A number as a text; how many at most.
    std::optional<std::string> limit;
    std::optional<std::string> keyWord;

    BASEAPI_FIELDS(GetUserListBean, deptId, isDirect, offset, limit, keyWord)
};

/// What `getUserList` answers.
struct GetuserListResponse : BaseResponse {
    std::optional<std::vector<UserInfo>> list;
    /// How many there are in all.
    std::optional<std::int64_t> total;

    BASEAPI_FIELDS_OF(GetuserListResponse, BaseResponse, list, total)
};

/// What `updateUser` sends.
struct ModifiedUserInfo {
    std::optional<std::int64_t> deptId;
    std::optional<std::int64_t> role;
    std::optional<std::int64_t> status;

    BASEAPI_FIELDS(ModifiedUserInfo, deptId, role, status)
};

/// What `updateUser` takes: the body, and the user beside it.
struct ModifyUserReq {
    /// It goes into the path, and nowhere else.
    std::optional<std::string> userId;
    /// The whole body.
    std::optional<ModifiedUserInfo> userBaseInfo;

    BASEAPI_FIELDS(ModifyUserReq, userId, userBaseInfo)
};

/// What `deleteUser` takes.
struct DeleteUserByUserIdReq {
    /// It goes into the path.
    std::optional<std::string> userId;

    BASEAPI_FIELDS(DeleteUserByUserIdReq, userId)
};

// ---- space

/// What `getSpace` takes.
struct GetSpaceBean {
    /// Absent counts as empty.
    std::optional<std::string> type;
    /// It goes into the path; absent counts as empty.
    std::optional<std::string> ownerId;
    std::optional<std::string> containerId;

    BASEAPI_FIELDS(GetSpaceBean, type, ownerId, containerId)
};

/// The room of an owner and what is used of it.
struct SpaceInfo {
    std::optional<std::string> tenantId;
    std::optional<std::string> creator;
    std::optional<std::string> createTime;
    std::optional<std::string> modifier;
    std::optional<std::string> updateTime;
    std::optional<std::string> ownerId;
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> status;
    std::optional<std::int64_t> capacity;
    std::optional<std::int64_t> spaceUsed;
    std::optional<std::string> containerId;
    std::optional<std::string> rootFileId;
    std::optional<std::string> bizRootFileId;
    std::optional<std::string> bizSboxFileId;

    BASEAPI_FIELDS(SpaceInfo, tenantId, creator, createTime, modifier, updateTime, ownerId, type, status,
                   capacity, spaceUsed, containerId, rootFileId, bizRootFileId, bizSboxFileId)
};

/// What `getSpace` answers.
struct GetSpaceResp : BaseResponse {
    std::optional<SpaceInfo> data;

    BASEAPI_FIELDS_OF(GetSpaceResp, BaseResponse, data)
};

/// Whose space, and of which type.
struct GetCarrierSpaceReq {
    std::optional<std::string> ownerId;
    std::optional<std::int64_t> type;

    BASEAPI_FIELDS(GetCarrierSpaceReq, ownerId, type)
};

/// What `batchGetSpace` takes.
struct BatchGetSpaceReq {
    std::optional<std::vector<GetCarrierSpaceReq>> batchGetSpaceReq;

    BASEAPI_FIELDS(BatchGetSpaceReq, batchGetSpaceReq)
};

/// As `SpaceInfo`, with other types.
struct CarrierSpaceInfo {
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> status;
    std::optional<std::int64_t> ownerId;
    std::optional<std::string> containerId;
    std::optional<std::string> bizRootFileId;
    std::optional<std::string> bizSboxFileId;
    std::optional<std::int64_t> capacity;
    std::optional<std::int64_t> capacityKb;
    std::optional<std::int64_t> spaceUsed;
    std::optional<std::string> tenantId;
    std::optional<std::string> creator;
    std::optional<std::string> createTime;
    std::optional<std::string> modifier;
    std::optional<std::string> updateTime;
    std::optional<std::string> rootFileId;

    BASEAPI_FIELDS(CarrierSpaceInfo, type, status, ownerId, containerId, bizRootFileId, bizSboxFileId,
                   capacity, capacityKb, spaceUsed, tenantId, creator, createTime, modifier, updateTime,
                   rootFileId)
};

/// One entry of the batch, with a result of its own.
struct GetSpaceInfoResponse {
    std::optional<std::string> msg;
    /// The result for this one entry; a failure here is none of the call.
    std::optional<std::int64_t> code;
    std::optional<CarrierSpaceInfo> date;  // as on the wire

    BASEAPI_FIELDS(GetSpaceInfoResponse, msg, code, date)
};

/// What `batchGetSpace` answers.
struct BatchGetSpaceInfoResponse : BaseResponse {
    std::optional<std::vector<GetSpaceInfoResponse>> batchGetSpaceResponse;

    BASEAPI_FIELDS_OF(BatchGetSpaceInfoResponse, BaseResponse, batchGetSpaceResponse)
};

}  // namespace baseapi::inline v1
