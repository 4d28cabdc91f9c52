#include "baseapi/api/files/file_impl.h"

#include <utility>

#include "baseapi/api/files/requests.h"

namespace baseapi::inline v1 {
namespace {

class FileImpl : public IFile {
    void getAccessFiles(std::optional<GetAccessFilesBean> bean,
                        NetworkCallback<GetAccessResponse> onCallback) override {
        start<GetAccessReq>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void createDirectory(std::optional<CreateDirectoryBean> bean,
                         NetworkCallback<CreateDirectoryResponse> onCallback) override {
        start<CreateDirectoryRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void fileComplete(std::optional<FilesCompleteBean> bean,
                      NetworkCallback<BaseResponse> onCallback) override {
        start<FileCompleteRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void fileRename(std::optional<FilesRenameBean> bean, NetworkCallback<BaseResponse> onCallback) override {
        start<FileRenameRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void filesCreate(std::optional<FilesCreateBean> bean,
                     NetworkCallback<FilesCreateResponse> onCallback) override {
        start<FilesCreateRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void fileSearch(std::optional<FilesSearchBean> bean,
                    NetworkCallback<FileSearchResponse> onCallback) override {
        start<FileSearchRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void filesList(std::optional<FilesListBean> bean,
                   NetworkCallback<FilesListResponse> onCallback) override {
        start<FilesListRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void filesPath(std::optional<FilesPathBean> bean,
                   NetworkCallback<FilesPathResponse> onCallback) override {
        start<FilesPathRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void filesStatsDir(std::optional<FilesStatsDirBean> bean,
                       NetworkCallback<FilesStatsDirResponse> onCallback) override {
        start<FilesStatsDirRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void getDownloadUrl(std::optional<GetDownloadUrlBean> bean,
                        NetworkCallback<GetDownloadUrlResponse> onCallback) override {
        start<GetDownloadUrlRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getFileDetail(std::optional<GetFileDetailBean> bean,
                       NetworkCallback<GetFileDetailResponse> onCallback) override {
        start<GetFileDetailRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getUploadUrl(std::optional<GetUploadUrlBean> bean,
                      NetworkCallback<GetUploadUrlResponse> onCallback) override {
        start<GetUploadUrlRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getFilePreviewUrl(std::optional<GetFilePreviewUrlBean> bean,
                           NetworkCallback<FileRreviewAndEditLinkResponse> onCallback) override {
        start<GetFilePreviewUrlRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IFile> makeFileImpl() {
    return std::make_unique<FileImpl>();
}

}  // namespace baseapi::inline v1
