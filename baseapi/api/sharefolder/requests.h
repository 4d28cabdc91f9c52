#pragma once

#include "baseapi/api/sharefolder/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IShareFolder`, in its order: what a request is made of, and nothing else.

class CreateShareFolderRequest : public BeanReq<CreateShareFolderReq, CreateShareFolderResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class RenameShareFolderRequest : public BeanReq<RenameShareFolderReq, RenameShareFolderResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class DeleteShareFolderRequest : public BeanReq<DeleteShareFolderReq, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetShareFolderDetailRequest : public BeanReq<GetShareFolderDetailReq, ShareFolderMetadataResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class ListShareFolderRequest : public BeanReq<ListShareFolderReq, ShareFolderPageResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetShareFolderAlbumListRequest : public BeanReq<GetShareFolderAlbumListReq, ShareFolderAlbumPageResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
