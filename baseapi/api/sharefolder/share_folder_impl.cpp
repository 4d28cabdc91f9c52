#include "baseapi/api/sharefolder/share_folder_impl.h"

#include <utility>

#include "baseapi/api/sharefolder/requests.h"

namespace baseapi::inline v1 {
namespace {

class ShareFolderImpl : public IShareFolder {
    void shareFolderCreate(std::optional<CreateShareFolderReq> bean,
                           NetworkCallback<CreateShareFolderResp> onCallback) override {
        start<CreateShareFolderRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void shareFolderRename(std::optional<RenameShareFolderReq> bean,
                           NetworkCallback<RenameShareFolderResp> onCallback) override {
        start<RenameShareFolderRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void shareFolderDelete(std::optional<DeleteShareFolderReq> bean,
                           NetworkCallback<BaseResponse> onCallback) override {
        start<DeleteShareFolderRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void shareFolderDetail(std::optional<GetShareFolderDetailReq> bean,
                           NetworkCallback<ShareFolderMetadataResp> onCallback) override {
        start<GetShareFolderDetailRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void shareFolderList(std::optional<ListShareFolderReq> bean,
                         NetworkCallback<ShareFolderPageResp> onCallback) override {
        start<ListShareFolderRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void shareFolderAlbumList(std::optional<GetShareFolderAlbumListReq> bean,
                              NetworkCallback<ShareFolderAlbumPageResp> onCallback) override {
        start<GetShareFolderAlbumListRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IShareFolder> makeShareFolderImpl() {
    return std::make_unique<ShareFolderImpl>();
}

}  // namespace baseapi::inline v1
