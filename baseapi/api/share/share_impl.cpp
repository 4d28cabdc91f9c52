#include "baseapi/api/share/share_impl.h"

#include <utility>

#include "baseapi/api/share/requests.h"

namespace baseapi::inline v1 {
namespace {

class ShareImpl : public IShare {
    void getShares(std::optional<GetShareBean> bean, NetworkCallback<GetShareResponse> onCallback) override {
        start<GetShareRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void createShare(std::optional<CreateShareBean> bean,
                     NetworkCallback<CreateShareResponse> onCallback) override {
        start<CreateShareRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void cancelShare(std::optional<CancelShareBean> bean,
                     NetworkCallback<CancelShareResponse> onCallback) override {
        start<CancelShareRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getShareDetail(std::optional<GetShareDetailBean> bean,
                        NetworkCallback<GetShareDetailResponse> onCallback) override {
        start<GetShareDetailRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void modifyShareDetail(std::optional<ModifyShareDetailBean> bean,
                           NetworkCallback<ModifyShareDetailResponse> onCallback) override {
        start<ModifyShareDetailRequest>(HTTPMethod::put, std::move(bean), std::move(onCallback));
    }
    void getShareFiles(std::optional<GetShareFilesBean> bean,
                       NetworkCallback<GetShareFilesResponse> onCallback) override {
        start<GetShareFilesRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IShare> makeShareImpl() {
    return std::make_unique<ShareImpl>();
}

}  // namespace baseapi::inline v1
