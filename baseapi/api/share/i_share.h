#pragma once

#include <optional>

#include "baseapi/api/share/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Links that expose files to anybody, or to chosen departments, groups and users, with permissions, an
/// optional extract code and an expiry. Reached through `CloudInstance::shared().getShareImpl()`; callable
/// from any thread. Requests, callbacks and refusals are as `IFile` says. Times are texts that the service
/// formats.
class IShare {
  public:
    virtual ~IShare() = default;

    /// The caller's own links, one page a call. A record without `sortType` or `sortDirection` is a
    /// programming error and ends the process.
    virtual void getShares(std::optional<GetShareBean> bean,
                           NetworkCallback<GetShareResponse> onCallback) = 0;

    /// Makes a link for the files named.
    virtual void createShare(std::optional<CreateShareBean> bean,
                             NetworkCallback<CreateShareResponse> onCallback) = 0;

    /// Takes links back. `shareIds` must be there. A link that could not be taken back says so in its own
    /// entry; the call stays a success.
    virtual void cancelShare(std::optional<CancelShareBean> bean,
                             NetworkCallback<CancelShareResponse> onCallback) = 0;

    /// All about one of the caller's own links. `shareId` must be there.
    virtual void getShareDetail(std::optional<GetShareDetailBean> bean,
                                NetworkCallback<GetShareDetailResponse> onCallback) = 0;

    /// Changes a link. `shareId` must be there.
    virtual void modifyShareDetail(std::optional<ModifyShareDetailBean> bean,
                                   NetworkCallback<ModifyShareDetailResponse> onCallback) = 0;

    /// What a visitor of a link sees: the link and its files, one page a call.
    virtual void getShareFiles(std::optional<GetShareFilesBean> bean,
                               NetworkCallback<GetShareFilesResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IShare, getShares, createShare, cancelShare, getShareDetail, modifyShareDetail,
                       getShareFiles)
};

}  // namespace baseapi::inline v1
