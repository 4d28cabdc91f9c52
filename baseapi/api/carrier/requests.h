#pragma once

#include "baseapi/api/carrier/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `ICarrier`, in its order: what a request is made of, and nothing else.

class StandPackageRequest : public BaseReq<GetstandPackagesResponse> {
  public:
    using BaseReq::BaseReq;
    int buildParams() override;
};

class StandPackagesOrdersRequest : public BaseReq<GetStandPackagesOrdersResponse> {
  public:
    using BaseReq::BaseReq;
    int buildParams() override;
};

class OperationReverseOrderRequest : public BeanReq<ReverseBatchOperationReq, BatchOperationResultResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class NotifyPackageExpireRequest : public BeanReq<NotifyPackageExpireReq, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
