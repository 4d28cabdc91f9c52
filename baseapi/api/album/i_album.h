#pragma once

#include <optional>

#include "baseapi/api/album/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Albums of the cloud: named sets of files, possibly tied to a scope of folders, and their content.
/// Reached through `CloudInstance::shared().getAlbumImpl()`; callable from any thread. Requests, callbacks
/// and refusals are as `IFile` says.
class IAlbum {
  public:
    virtual ~IAlbum() = default;

    /// Makes an album; the answer holds its id.
    virtual void albumCreate(std::optional<CreateAlbumReq> bean,
                             NetworkCallback<CreateAlbumResp> onCallback) = 0;

    /// Changes an album. An absent `albumId` goes into the path as empty; an absent `req` is sent as null.
    virtual void albumUpdate(std::optional<UpdateAlbumReqEx> bean,
                             NetworkCallback<BaseResponse> onCallback) = 0;

    /// Deletes an album. An absent `albumId` goes into the path as empty.
    virtual void albumDelete(std::optional<DeleteAlbumReq> bean,
                             NetworkCallback<BaseResponse> onCallback) = 0;

    /// The albums of a user, one page a call.
    virtual void albumList(std::optional<GetAlbumListReq> bean,
                           NetworkCallback<ListAlbumsResp> onCallback) = 0;

    /// The files of an album, one page a call. An absent `albumId` goes into the path as empty.
    virtual void albumContentList(std::optional<GetAlbumFileListReq> bean,
                                  NetworkCallback<ListAlbumContentResp> onCallback) = 0;

    /// Puts files into an album. `req` and `albumId` must be there.
    virtual void albumContentAdd(std::optional<BatchAddContent2AlbumReqEx> bean,
                                 NetworkCallback<BaseResponse> onCallback) = 0;

    /// Takes a file out of an album. `req` and `albumId` must be there.
    virtual void albumContentDelete(std::optional<DeleteAlbumContentReq> bean,
                                    NetworkCallback<BaseResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IAlbum, albumCreate, albumUpdate, albumDelete, albumList, albumContentList,
                       albumContentAdd, albumContentDelete)
};

}  // namespace baseapi::inline v1
