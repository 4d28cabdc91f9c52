#include "baseapi/api/album/album_impl.h"

#include <utility>

#include "baseapi/api/album/requests.h"

namespace baseapi::inline v1 {
namespace {

class AlbumImpl : public IAlbum {
    void albumCreate(std::optional<CreateAlbumReq> bean,
                     NetworkCallback<CreateAlbumResp> onCallback) override {
        start<CreateAlbumRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void albumUpdate(std::optional<UpdateAlbumReqEx> bean,
                     NetworkCallback<BaseResponse> onCallback) override {
        start<UpdateAlbumRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void albumDelete(std::optional<DeleteAlbumReq> bean, NetworkCallback<BaseResponse> onCallback) override {
        start<DeleteAlbumRequest>(HTTPMethod::delete_, std::move(bean), std::move(onCallback));
    }
    void albumList(std::optional<GetAlbumListReq> bean, NetworkCallback<ListAlbumsResp> onCallback) override {
        start<GetAlbumListRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void albumContentList(std::optional<GetAlbumFileListReq> bean,
                          NetworkCallback<ListAlbumContentResp> onCallback) override {
        start<GetAlbumFileListRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void albumContentAdd(std::optional<BatchAddContent2AlbumReqEx> bean,
                         NetworkCallback<BaseResponse> onCallback) override {
        start<AddAlbumContentRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void albumContentDelete(std::optional<DeleteAlbumContentReq> bean,
                            NetworkCallback<BaseResponse> onCallback) override {
        start<BatchDeleteAlbumsRequest>(HTTPMethod::delete_, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IAlbum> makeAlbumImpl() {
    return std::make_unique<AlbumImpl>();
}

}  // namespace baseapi::inline v1
