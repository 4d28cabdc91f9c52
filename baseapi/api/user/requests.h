#pragma once

#include "baseapi/api/user/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IUser` and `ISpace`, in their order: what a request is made of, and
// nothing else.

class UserAuthReq : public BeanReq<AuthCodeBean, UserAuthResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetSpaceReq : public BeanReq<GetSpaceBean, GetSpaceResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetUserByIdReq : public BeanReq<GetUserByIdBean, GetUsersByIdResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetUserListReq : public BeanReq<GetUserListBean, GetuserListResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class ModifyUserRequest : public BeanReq<ModifyUserReq, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class DeleteUserByUserIdRequest : public BeanReq<DeleteUserByUserIdReq, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class BatchGetSpaceRequest : public BeanReq<BatchGetSpaceReq, BatchGetSpaceInfoResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
