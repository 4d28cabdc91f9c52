#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- albums

/// What `albumCreate` takes.
struct CreateAlbumReq {
    std::optional<std::string> name;
    std::optional<std::string> type;
    std::optional<std::vector<std::string>> scopeDir;
    std::optional<std::string> scopeParentFolderId;
    /// A text here, a number in `UpdateAlbumReq`.
    std::optional<std::string> scopeKind;
    std::optional<std::string> groupId;
    /// A text here, a number in a list of albums.
    std::optional<std::string> albumKind;
    std::optional<std::int64_t> shareFolderId;
    std::optional<std::string> containerId;

    BASEAPI_FIELDS(CreateAlbumReq, name, type, scopeDir, scopeParentFolderId, scopeKind, groupId, albumKind,
                   shareFolderId, containerId)
};

/// What `albumCreate` answers.
struct CreateAlbumResp : BaseResponse {
    std::optional<std::string> albumId;

    BASEAPI_FIELDS_OF(CreateAlbumResp, BaseResponse, albumId)
};

/// What `albumUpdate` sends.
struct UpdateAlbumReq {
    std::optional<std::string> scopeParentFolderId;
    std::optional<std::vector<std::string>> scopeDirList;
    std::optional<std::int64_t> scopeKind;
    std::optional<std::string> cover_image_url;  // as on the wire
    std::optional<std::string> name;

    BASEAPI_FIELDS(UpdateAlbumReq, scopeParentFolderId, scopeDirList, scopeKind, cover_image_url, name)
};

/// What `albumUpdate` takes: the body, and the album beside it.
struct UpdateAlbumReqEx {
    /// The whole body; an absent one goes out as the JSON text null.
    std::optional<UpdateAlbumReq> req;
    /// It goes into the path; absent counts as empty.
    std::optional<std::string> albumId;

    BASEAPI_FIELDS(UpdateAlbumReqEx, req, albumId)
};

/// What `albumDelete` takes.
struct DeleteAlbumReq {
    /// It goes into the path; absent counts as empty.
    std::optional<std::string> albumId;

    BASEAPI_FIELDS(DeleteAlbumReq, albumId)
};

/// What `albumList` takes.
struct GetAlbumListReq {
    std::optional<std::string> userId;
    std::optional<std::int64_t> albumKind;
    std::optional<std::int64_t> albumType;
    std::optional<std::string> groupId;
    std::int64_t pageSize = 100;
    /// Absent counts as 0.
    std::optional<std::int64_t> pageNum;

    BASEAPI_FIELDS(GetAlbumListReq, userId, albumKind, albumType, groupId, pageSize, pageNum)
};

/// An album in a list.
struct AlbumItem {
    std::optional<std::string> id;
    std::optional<std::string> name;
    std::optional<std::string> coverImg;
    std::optional<std::int64_t> albumType;
    std::optional<std::int64_t> albumKind;
    std::optional<std::vector<std::string>> scopeDir;
    std::optional<std::string> scopeKind;
    std::optional<std::string> scopeParentFolderId;
    std::optional<std::string> createTime;
    std::optional<std::string> updateTime;

    BASEAPI_FIELDS(AlbumItem, id, name, coverImg, albumType, albumKind, scopeDir, scopeKind,
                   scopeParentFolderId, createTime, updateTime)
};

/// What `albumList` answers.
struct ListAlbumsResp : BaseResponse {
    std::optional<std::string> nextPageCursor;
    /// How many there are in all.
    std::optional<std::int64_t> total;
    std::optional<std::vector<AlbumItem>> albumList;

    BASEAPI_FIELDS_OF(ListAlbumsResp, BaseResponse, nextPageCursor, total, albumList)
};

// ---- content

/// A file of an album.
struct AlbumContent {
    std::optional<std::string> id;
    std::optional<std::string> takeTime;
    std::optional<std::string> ownerId;
    std::optional<std::string> fileName;
    std::optional<std::string> mimeType;
    std::optional<std::string> fileType;
    std::optional<std::string> fileSuffix;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::vector<std::string>> containers;
    std::optional<std::string> createdTime;
    std::optional<std::string> editedTime;
    std::optional<std::string> recycled;
    std::optional<std::string> contentUrl;
    std::optional<std::string> thumbnailUrl;
    std::optional<std::string> favorite;

    BASEAPI_FIELDS(AlbumContent, id, takeTime, ownerId, fileName, mimeType, fileType, fileSuffix,
                   parentFolder, containers, createdTime, editedTime, recycled, contentUrl, thumbnailUrl,
                   favorite)
};

/// What `albumContentList` takes.
struct GetAlbumFileListReq {
    /// It goes into the path; absent counts as empty.
    std::optional<std::string> albumId;
    std::int64_t pageSize = 100;
    std::optional<std::string> pageCursor;
    /// It is sent for the direction too.
    std::optional<std::int64_t> sortType;
    /// Sent nowhere.
    std::optional<std::int64_t> sortDirection;

    BASEAPI_FIELDS(GetAlbumFileListReq, albumId, pageSize, pageCursor, sortType, sortDirection)
};

/// What `albumContentList` answers.
struct ListAlbumContentResp : BaseResponse {
    std::optional<std::string> nextPageCursor;
    /// How many there are in all.
    std::optional<std::int64_t> total;
    std::optional<std::vector<AlbumContent>> contentList;

    BASEAPI_FIELDS_OF(ListAlbumContentResp, BaseResponse, nextPageCursor, total, contentList)
};

/// A file, and whose it is.
struct FileMap {
    std::optional<std::string> fileId;
    std::optional<std::string> ownerId;

    BASEAPI_FIELDS(FileMap, fileId, ownerId)
};

/// What `albumContentAdd` sends.
struct BatchAddContent2AlbumReq {
    std::optional<std::vector<FileMap>> fileIds;

    BASEAPI_FIELDS(BatchAddContent2AlbumReq, fileIds)
};

/// What `albumContentAdd` takes: the body, and the album beside it.
struct BatchAddContent2AlbumReqEx {
    /// It goes into the path.
    std::optional<std::string> albumId;
    /// The whole body.
    std::optional<BatchAddContent2AlbumReq> req;

    BASEAPI_FIELDS(BatchAddContent2AlbumReqEx, albumId, req)
};

/// What `albumContentDelete` takes: the body, and the album beside it.
struct DeleteAlbumContentReq {
    /// The whole body: the one file to take out.
    std::optional<AlbumContent> req;
    /// It goes into the path.
    std::optional<std::string> albumId;

    BASEAPI_FIELDS(DeleteAlbumContentReq, req, albumId)
};

/// Files of an album, by their ids. No operation takes it; it is there for the host's own use.
struct DeleteAlbumContent {
    std::optional<std::vector<std::string>> ids;

    BASEAPI_FIELDS(DeleteAlbumContent, ids)
};

}  // namespace baseapi::inline v1
