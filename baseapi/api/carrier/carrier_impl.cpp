#include "baseapi/api/carrier/carrier_impl.h"

#include <utility>

#include "baseapi/api/carrier/requests.h"

namespace baseapi::inline v1 {
namespace {

class CarrierImpl : public ICarrier {
    void standardPackages(NetworkCallback<GetstandPackagesResponse> onCallback) override {
        start<StandPackageRequest>(HTTPMethod::get, std::move(onCallback));
    }
    void standardPackagesOrders(NetworkCallback<GetStandPackagesOrdersResponse> onCallback) override {
        start<StandPackagesOrdersRequest>(HTTPMethod::get, std::move(onCallback));
    }
    void operationBatch(std::optional<ReverseBatchOperationReq> bean,
                        NetworkCallback<BatchOperationResultResp> onCallback) override {
        start<OperationReverseOrderRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void notifyPackageExpire(std::optional<NotifyPackageExpireReq> bean,
                             NetworkCallback<BaseResponse> onCallback) override {
        start<NotifyPackageExpireRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<ICarrier> makeCarrierImpl() {
    return std::make_unique<CarrierImpl>();
}

}  // namespace baseapi::inline v1
