#pragma once

#include <optional>

#include "baseapi/api/user/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Sign-in, the users of the organisation, and the space of an owner. Reached through
/// `CloudInstance::shared().getUserImpl()`; callable from any thread. Requests, callbacks and refusals are
/// as `IFile` says.
class IUser {
  public:
    virtual ~IUser() = default;

    /// Exchanges an authorisation code for a token. `authCode` must be there. The token is stored nowhere:
    /// the host sets `CloudInstance::token` to the answer's `accessToken`.
    virtual void getToken(std::optional<AuthCodeBean> bean, NetworkCallback<UserAuthResp> onCallback) = 0;

    /// The space of an owner. An absent `ownerId` goes into the path as empty.
    virtual void getSpace(std::optional<GetSpaceBean> bean, NetworkCallback<GetSpaceResp> onCallback) = 0;

    /// All about one user. `userId` must be there.
    virtual void getUserById(std::optional<GetUserByIdBean> bean,
                             NetworkCallback<GetUsersByIdResponse> onCallback) = 0;

    /// The users of a department, one page a call. A record without `isDirect` is a programming error and
    /// ends the process.
    virtual void getUserList(std::optional<GetUserListBean> bean,
                             NetworkCallback<GetuserListResponse> onCallback) = 0;

    /// Changes a user. `userId` and `userBaseInfo` must be there. It is sent as `deleteUser` is; that it has
    /// a body is all that tells the two apart.
    virtual void updateUser(std::optional<ModifyUserReq> bean, NetworkCallback<BaseResponse> onCallback) = 0;

    /// Deletes a user. `userId` must be there.
    virtual void deleteUser(std::optional<DeleteUserByUserIdReq> bean,
                            NetworkCallback<BaseResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IUser, getToken, getSpace, getUserById, getUserList, updateUser, deleteUser)
};

}  // namespace baseapi::inline v1
