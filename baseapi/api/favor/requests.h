#pragma once

#include "baseapi/api/favor/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IFavor` and `IRevision`, in their order: what a request is made of, and
// nothing else.

class GetStarFilesRequest : public BeanReq<GetStarFilesBean, GetStarFilesResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetStarBatchRequest : public BeanReq<GetStarBatchBean, GetStarBatchResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class UpdateRevisionRequest : public BeanReq<UpdateRevisionBean, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
