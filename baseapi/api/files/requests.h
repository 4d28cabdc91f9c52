#pragma once

#include "baseapi/api/files/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IFile`, in its order: what a request is made of, and nothing else.

class GetAccessReq : public BeanReq<GetAccessFilesBean, GetAccessResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CreateDirectoryRequest : public BeanReq<CreateDirectoryBean, CreateDirectoryResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FileCompleteRequest : public BeanReq<FilesCompleteBean, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FileRenameRequest : public BeanReq<FilesRenameBean, BaseResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FilesCreateRequest : public BeanReq<FilesCreateBean, FilesCreateResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FileSearchRequest : public BeanReq<FilesSearchBean, FileSearchResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FilesListRequest : public BeanReq<FilesListBean, FilesListResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FilesPathRequest : public BeanReq<FilesPathBean, FilesPathResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class FilesStatsDirRequest : public BeanReq<FilesStatsDirBean, FilesStatsDirResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetDownloadUrlRequest : public BeanReq<GetDownloadUrlBean, GetDownloadUrlResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetFileDetailRequest : public BeanReq<GetFileDetailBean, GetFileDetailResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetUploadUrlRequest : public BeanReq<GetUploadUrlBean, GetUploadUrlResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetFilePreviewUrlRequest : public BeanReq<GetFilePreviewUrlBean, FileRreviewAndEditLinkResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
