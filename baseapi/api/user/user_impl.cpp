#include "baseapi/api/user/user_impl.h"

#include <utility>

#include "baseapi/api/user/requests.h"

namespace baseapi::inline v1 {
namespace {

class UserImpl : public IUser {
    void getToken(std::optional<AuthCodeBean> bean, NetworkCallback<UserAuthResp> onCallback) override {
        start<UserAuthReq>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getSpace(std::optional<GetSpaceBean> bean, NetworkCallback<GetSpaceResp> onCallback) override {
        start<GetSpaceReq>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void getUserById(std::optional<GetUserByIdBean> bean,
                     NetworkCallback<GetUsersByIdResponse> onCallback) override {
        start<GetUserByIdReq>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void getUserList(std::optional<GetUserListBean> bean,
                     NetworkCallback<GetuserListResponse> onCallback) override {
        start<GetUserListReq>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void updateUser(std::optional<ModifyUserReq> bean, NetworkCallback<BaseResponse> onCallback) override {
        // Deleting is the verb of a change too, as on the wire.
        start<ModifyUserRequest>(HTTPMethod::delete_, std::move(bean), std::move(onCallback));
    }
    void deleteUser(std::optional<DeleteUserByUserIdReq> bean,
                    NetworkCallback<BaseResponse> onCallback) override {
        start<DeleteUserByUserIdRequest>(HTTPMethod::delete_, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IUser> makeUserImpl() {
    return std::make_unique<UserImpl>();
}

}  // namespace baseapi::inline v1
