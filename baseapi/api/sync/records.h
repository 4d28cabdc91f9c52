#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/file.h"
#include "baseapi/api/records/page_info.h"
#include "baseapi/api/records/sort_info.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- sync folders

/// What `createSyncFolder` takes.
struct CreateSyncDirReq {
    std::optional<std::string> container;
    std::optional<std::string> fileName;
    bool hidden = false;
    std::optional<std::string> parentFolder;
    std::optional<std::string> fileId;

    BASEAPI_FIELDS(CreateSyncDirReq, container, fileName, hidden, parentFolder, fileId)
};

/// What `createSyncFolder` answers.
struct CreateSyncDirResp : BaseResponse {
    std::optional<std::string> container;
    std::optional<std::string> fileId;
    std::optional<std::string> fileName;
    /// Whether the folder was there before.
    std::optional<bool> exist;

    BASEAPI_FIELDS_OF(CreateSyncDirResp, BaseResponse, container, fileId, fileName, exist)
};

/// What `closeSyncFolder` takes.
struct CloseSyncDirReq {
    std::optional<std::string> container;
    /// It must be there.
    std::optional<std::string> syncDirId;

    BASEAPI_FIELDS(CloseSyncDirReq, container, syncDirId)
};

/// What `closeSyncFolder` answers.
struct CloseSyncDirResp : BaseResponse {
    std::optional<std::string> syncDirId;

    BASEAPI_FIELDS_OF(CloseSyncDirResp, BaseResponse, syncDirId)
};

// ---- the feed of changes

/// What `getSyncFolderStartCursor` takes.
struct GetStartCursorReq {
    std::optional<std::string> container;
    /// The sync folder. It must be there.
    std::optional<std::string> fileId;

    BASEAPI_FIELDS(GetStartCursorReq, container, fileId)
};

/// What `getSyncFolderStartCursor` answers.
struct GetStartCursorResp : BaseResponse {
    std::optional<std::string> startCursor;

    BASEAPI_FIELDS_OF(GetStartCursorResp, BaseResponse, startCursor)
};

/// What `listChangeSyncFolder` takes.
struct ListChangeReq {
    std::optional<std::string> container;
    std::optional<std::string> syncDirId;
    std::optional<std::string> deviceId;
    /// The start cursor, or the one that came with the page before.
    std::optional<std::string> cursor;
    /// The most changes of one page.
    std::optional<std::int64_t> pageSize;

    BASEAPI_FIELDS(ListChangeReq, container, syncDirId, deviceId, cursor, pageSize)
};

/// What `FileChangeInfo` tells beside the file.
struct FileChangeExtInfo {
    std::optional<std::int64_t> moveType;
    /// Where a moved file was before.
    std::optional<std::string> srcParentFileId;
    std::optional<std::string> idPath;
    std::optional<std::int64_t> localOperatedAt;

    BASEAPI_FIELDS(FileChangeExtInfo, moveType, srcParentFileId, idPath, localOperatedAt)
};

/// One change in a sync folder.
struct FileChangeInfo {
    std::optional<std::string> policy;
    std::optional<std::string> changeType;
    std::optional<std::string> deviceId;
    std::optional<File> fileInfo;
    std::optional<FileChangeExtInfo> extInfo;

    BASEAPI_FIELDS(FileChangeInfo, policy, changeType, deviceId, fileInfo, extInfo)
};

/// What `listChangeSyncFolder` answers.
struct ListChangeResp : BaseResponse {
    /// The cursor behind these changes.
    std::optional<std::string> nextCursor;
    /// Whether more changes wait behind `nextCursor`; an answer without it does not decode.
    bool hasMore = false;
    std::optional<std::vector<FileChangeInfo>> fileChangeList;

    BASEAPI_FIELDS_OF(ListChangeResp, BaseResponse, nextCursor, hasMore, fileChangeList)
};

// ---- the tree

/// What `walkFileSyncFolder` takes.
struct WalkFileReq {
    /// Under this name here, as "container" in the other records.
    std::optional<std::string> containerId;
    std::optional<std::string> parentFileId;
    std::optional<std::string> type;
    bool includeHidden = false;
    std::optional<PageInfo> pageInfo;
    std::optional<FileSortInfo> sortInfo;

    BASEAPI_FIELDS(WalkFileReq, containerId, parentFileId, type, includeHidden, pageInfo, sortInfo)
};

/// What `walkFileSyncFolder` answers.
struct WalkFileResp : BaseResponse {
    std::optional<std::vector<File>> files;
    /// Names the next page.
    std::optional<std::string> nextCursor;

    BASEAPI_FIELDS_OF(WalkFileResp, BaseResponse, files, nextCursor)
};

}  // namespace baseapi::inline v1
