#include "baseapi/api/favor/favor_impl.h"

#include <utility>

#include "baseapi/api/favor/requests.h"

namespace baseapi::inline v1 {
namespace {

class FavorImpl : public IFavor {
    void getStarFiles(std::optional<GetStarFilesBean> bean,
                      NetworkCallback<GetStarFilesResponse> onCallback) override {
        start<GetStarFilesRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void getStarBatch(std::optional<GetStarBatchBean> bean,
                      NetworkCallback<GetStarBatchResponse> onCallback) override {
        start<GetStarBatchRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IFavor> makeFavorImpl() {
    return std::make_unique<FavorImpl>();
}

}  // namespace baseapi::inline v1
