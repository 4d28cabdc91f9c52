#pragma once

#include "baseapi/api/album/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IAlbum`, in its order: what a request is made of, and nothing else.

class CreateAlbumRequest : public BeanReq<CreateAlbumReq, CreateAlbumResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class UpdateAlbumRequest : public BeanReq<UpdateAlbumReqEx, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class DeleteAlbumRequest : public BeanReq<DeleteAlbumReq, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetAlbumListRequest : public BeanReq<GetAlbumListReq, ListAlbumsResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetAlbumFileListRequest : public BeanReq<GetAlbumFileListReq, ListAlbumContentResp> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class AddAlbumContentRequest : public BeanReq<BatchAddContent2AlbumReqEx, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class BatchDeleteAlbumsRequest : public BeanReq<DeleteAlbumContentReq, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
