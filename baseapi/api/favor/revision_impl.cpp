#include "baseapi/api/favor/revision_impl.h"

#include <utility>

#include "baseapi/api/favor/requests.h"

namespace baseapi::inline v1 {
namespace {

class RevisionImpl : public IRevision {
    void updateRevision(std::optional<UpdateRevisionBean> bean,
                        NetworkCallback<BaseResponse> onCallback) override {
        start<UpdateRevisionRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IRevision> makeRevisionImpl() {
    return std::make_unique<RevisionImpl>();
}

}  // namespace baseapi::inline v1
