#include "baseapi/api/sync/folder_sync_impl.h"

#include <utility>

#include "baseapi/api/sync/requests.h"

namespace baseapi::inline v1 {
namespace {

class FolderSyncImpl : public IFolderSync {
    void createSyncFolder(std::optional<CreateSyncDirReq> bean,
                          NetworkCallback<CreateSyncDirResp> onCallback) override {
        start<CreateSyncDirRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void closeSyncFolder(std::optional<CloseSyncDirReq> bean,
                         NetworkCallback<CloseSyncDirResp> onCallback) override {
        start<CloseSyncDirRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getSyncFolderStartCursor(std::optional<GetStartCursorReq> bean,
                                  NetworkCallback<GetStartCursorResp> onCallback) override {
        start<GetSyncDirStartCursorRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void listChangeSyncFolder(std::optional<ListChangeReq> bean,
                              NetworkCallback<ListChangeResp> onCallback) override {
        start<ListChangeSyncDirRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void walkFileSyncFolder(std::optional<WalkFileReq> bean,
                            NetworkCallback<WalkFileResp> onCallback) override {
        start<WalkFileSyncDirRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IFolderSync> makeFolderSyncImpl() {
    return std::make_unique<FolderSyncImpl>();
}

}  // namespace baseapi::inline v1
