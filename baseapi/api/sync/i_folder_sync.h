#pragma once

#include <optional>

#include "baseapi/api/sync/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Sync folders: directories that a client watches through a feed of changes. A client makes or opens one,
/// asks for the cursor that its feed starts at, and then for the changes behind its cursor, page by page; it
/// can also walk the whole tree. Reached through `CloudInstance::shared().getfolderSyncImpl()`; callable from
/// any thread. Requests, callbacks and refusals are as `IFile` says.
class IFolderSync {
  public:
    virtual ~IFolderSync() = default;

    /// Makes a sync folder, or opens the one that is there.
    virtual void createSyncFolder(std::optional<CreateSyncDirReq> bean,
                                  NetworkCallback<CreateSyncDirResp> onCallback) = 0;

    /// Ends the watch of a sync folder. `syncDirId` must be there.
    virtual void closeSyncFolder(std::optional<CloseSyncDirReq> bean,
                                 NetworkCallback<CloseSyncDirResp> onCallback) = 0;

    /// The cursor that a sync folder's feed starts at. `fileId` must be there.
    virtual void getSyncFolderStartCursor(std::optional<GetStartCursorReq> bean,
                                          NetworkCallback<GetStartCursorResp> onCallback) = 0;

    /// The changes behind a cursor, one page a call.
    virtual void listChangeSyncFolder(std::optional<ListChangeReq> bean,
                                      NetworkCallback<ListChangeResp> onCallback) = 0;

    /// The files of a sync folder, one page a call.
    virtual void walkFileSyncFolder(std::optional<WalkFileReq> bean,
                                    NetworkCallback<WalkFileResp> onCallback) = 0;

    BASEAPI_OPERATIONS(IFolderSync, createSyncFolder, closeSyncFolder, getSyncFolderStartCursor,
                       listChangeSyncFolder, walkFileSyncFolder)
};

}  // namespace baseapi::inline v1
