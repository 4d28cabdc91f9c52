#pragma once

#include "baseapi/api/sync/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IFolderSync`, in its order: what a request is made of, and nothing else.

class CreateSyncDirRequest : public BeanReq<CreateSyncDirReq, CreateSyncDirResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CloseSyncDirRequest : public BeanReq<CloseSyncDirReq, CloseSyncDirResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetSyncDirStartCursorRequest : public BeanReq<GetStartCursorReq, GetStartCursorResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class ListChangeSyncDirRequest : public BeanReq<ListChangeReq, ListChangeResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class WalkFileSyncDirRequest : public BeanReq<WalkFileReq, WalkFileResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
