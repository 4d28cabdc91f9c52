#include "baseapi/api/user/user_impl.h"

#include <utility>

#include "baseapi/api/user/requests.h"

namespace baseapi {
namespace {

class UserImpl : public IUser {
    void getToken(std::optional<AuthCodeBean> bean, NetworkCallback<UserAuthResp> onCallback) override {
        start<UserAuthReq>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IUser> makeUserImpl() {
    return std::make_unique<UserImpl>();
}

}  // namespace baseapi
