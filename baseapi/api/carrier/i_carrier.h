#pragma once

#include <optional>

#include "baseapi/api/carrier/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Storage packages that a telephone carrier sells: what is on offer, what the user has ordered, operations
/// taken back in batches, and the notice of a package that runs out. Reached through
/// `CloudInstance::shared().getCarrierImpl()`; callable from any thread. Requests, callbacks and refusals are
/// as `IFile` says.
class ICarrier {
  public:
    virtual ~ICarrier() = default;

    /// The packages on offer.
    virtual void standardPackages(NetworkCallback<GetstandPackagesResponse> onCallback) = 0;

    /// The orders of the user.
    virtual void standardPackagesOrders(NetworkCallback<GetStandPackagesOrdersResponse> onCallback) = 0;

    /// Takes package operations back. An answer in which some failed is still a success; each entry says
    /// what became of its own.
    virtual void operationBatch(std::optional<ReverseBatchOperationReq> bean,
                                NetworkCallback<BatchOperationResultResp> onCallback) = 0;

    /// Tells that a package of a user runs out.
    virtual void notifyPackageExpire(std::optional<NotifyPackageExpireReq> bean,
                                     NetworkCallback<BaseResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(ICarrier, standardPackages, standardPackagesOrders, operationBatch,
                       notifyPackageExpire)
};

}  // namespace baseapi::inline v1
