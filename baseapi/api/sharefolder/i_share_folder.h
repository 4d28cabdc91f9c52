#pragma once

#include <optional>

#include "baseapi/api/sharefolder/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Share folders: shared spaces with an owner, a container, a limit of members and albums of their own.
/// Reached through `CloudInstance::shared().getShareFolderImpl()`; callable from any thread. Requests and
/// callbacks are as `IFile` says, but nothing is refused for what is absent: without a record the request
/// goes out with neither path, query nor body, and the service says what it makes of it. Only a text that
/// is not UTF-8 is refused, where the record is the body.
class IShareFolder {
  public:
    virtual ~IShareFolder() = default;

    /// Makes a share folder.
    virtual void shareFolderCreate(std::optional<CreateShareFolderReq> bean,
                                   NetworkCallback<CreateShareFolderResp> onCallback) = 0;

    /// Gives a share folder another title.
    virtual void shareFolderRename(std::optional<RenameShareFolderReq> bean,
                                   NetworkCallback<RenameShareFolderResp> onCallback) = 0;

    /// Deletes a share folder.
    virtual void shareFolderDelete(std::optional<DeleteShareFolderReq> bean,
                                   NetworkCallback<BaseResponse> onCallback) = 0;

    /// All about one share folder.
    virtual void shareFolderDetail(std::optional<GetShareFolderDetailReq> bean,
                                   NetworkCallback<ShareFolderMetadataResp> onCallback) = 0;

    /// The share folders of the caller, one page a call.
    virtual void shareFolderList(std::optional<ListShareFolderReq> bean,
                                 NetworkCallback<ShareFolderPageResp> onCallback) = 0;

    /// The albums of a share folder, one page a call.
    virtual void shareFolderAlbumList(std::optional<GetShareFolderAlbumListReq> bean,
                                      NetworkCallback<ShareFolderAlbumPageResp> onCallback) = 0;

    BASEAPI_OPERATIONS(IShareFolder, shareFolderCreate, shareFolderRename, shareFolderDelete,
                       shareFolderDetail, shareFolderList, shareFolderAlbumList)
};

}  // namespace baseapi::inline v1
