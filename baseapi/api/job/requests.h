#pragma once

#include "baseapi/api/job/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IJob`, in its order: what a request is made of, and nothing else.

class CancelJobsRequest : public BeanReq<CancelJobsBean, CancelJobsResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CreateJobsRequest : public BeanReq<CreateJobBean, CreateJobsResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetJobDetailByIdRequest : public BeanReq<GetJobDetailByIdBean, GetJobDetailByIdResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetJobsRequest : public BeanReq<GetJobsBean, GetJobsResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
