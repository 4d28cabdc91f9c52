#pragma once

#include "baseapi/api/share/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IShare`, in its order: what a request is made of, and nothing else.

class GetShareRequest : public BeanReq<GetShareBean, GetShareResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CreateShareRequest : public BeanReq<CreateShareBean, CreateShareResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CancelShareRequest : public BeanReq<CancelShareBean, CancelShareResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetShareDetailRequest : public BeanReq<GetShareDetailBean, GetShareDetailResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class ModifyShareDetailRequest : public BeanReq<ModifyShareDetailBean, ModifyShareDetailResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetShareFilesRequest : public BeanReq<GetShareFilesBean, GetShareFilesResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
