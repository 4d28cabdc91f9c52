#include "baseapi/api/user/space_impl.h"

#include <utility>

#include "baseapi/api/user/requests.h"

namespace baseapi::inline v1 {
namespace {

class SpaceImpl : public ISpace {
    void batchGetSpace(std::optional<BatchGetSpaceReq> bean,
                       NetworkCallback<BatchGetSpaceInfoResponse> onCallback) override {
        start<BatchGetSpaceRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<ISpace> makeSpaceImpl() {
    return std::make_unique<SpaceImpl>();
}

}  // namespace baseapi::inline v1
