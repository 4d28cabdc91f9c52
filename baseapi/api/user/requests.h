#pragma once

#include "baseapi/api/user/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi {

// One class for each operation of `IUser`, in its order: what a request is made of, and nothing else.

class UserAuthReq : public BeanReq<AuthCodeBean, UserAuthResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi
