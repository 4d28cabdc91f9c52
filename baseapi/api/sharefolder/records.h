#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

/// What `shareFolderCreate` takes.
struct CreateShareFolderReq {
    std::optional<std::int64_t> shareType;
    std::optional<std::string> containerId;
    std::optional<std::string> name;

    BASEAPI_FIELDS(CreateShareFolderReq, shareType, containerId, name)
};

/// A share folder as it was made.
struct CreateShareFolderInfo {
    std::optional<std::string> tenantId;
    std::optional<std::string> creator;
    std::optional<std::string> createTime;
    std::optional<std::int64_t> groupId;
    std::optional<std::string> id;
    std::optional<std::string> shareFolderId;

    BASEAPI_FIELDS(CreateShareFolderInfo, tenantId, creator, createTime, groupId, id, shareFolderId)
};

/// What `shareFolderCreate` answers.
struct CreateShareFolderResp : BaseResponse {
    std::optional<std::string> id;
    std::optional<CreateShareFolderInfo> data;

    BASEAPI_FIELDS_OF(CreateShareFolderResp, BaseResponse, id, data)
};

/// What `shareFolderRename` takes.
struct RenameShareFolderReq {
    std::optional<std::string> id;
    /// The new title.
    std::optional<std::string> fileName;

    BASEAPI_FIELDS(RenameShareFolderReq, id, fileName)
};

/// What `shareFolderRename` answers.
struct RenameShareFolderResp : BaseResponse {
    std::optional<std::string> id;

    BASEAPI_FIELDS_OF(RenameShareFolderResp, BaseResponse, id)
};

/// What `shareFolderDelete` takes.
struct DeleteShareFolderReq {
    std::optional<std::string> id;

    BASEAPI_FIELDS(DeleteShareFolderReq, id)
};

/// What `shareFolderDetail` takes.
struct GetShareFolderDetailReq {
    /// It goes into the path, an absent one as 0. A number here, a text in `GetShareFolderAlbumListReq`.
    std::optional<std::int64_t> shareFolderId;

    BASEAPI_FIELDS(GetShareFolderDetailReq, shareFolderId)
};

/// A share folder: a space with an owner, a container of its own and room for so many members.
struct ShareFolder {
    std::optional<std::string> tenantId;
    std::optional<std::string> creator;
    std::optional<std::string> createTime;
    std::optional<std::int64_t> ownerId;
    std::optional<std::int64_t> status;
    std::optional<std::string> id;
    std::optional<std::string> containerId;
    std::optional<std::string> shareFolderFileId;
    std::optional<std::string> albumRootFileId;
    std::optional<std::string> name;
    std::optional<std::string> ownerName;
    std::optional<std::int64_t> groupId;
    /// How many members it can have.
    std::optional<std::int64_t> maxMember;

    BASEAPI_FIELDS(ShareFolder, tenantId, creator, createTime, ownerId, status, id, containerId,
                   shareFolderFileId, albumRootFileId, name, ownerName, groupId, maxMember)
};

/// What `shareFolderDetail` answers.
struct ShareFolderMetadataResp : BaseResponse {
    std::optional<std::int64_t> total;
    std::optional<ShareFolder> shareFolder;

    BASEAPI_FIELDS_OF(ShareFolderMetadataResp, BaseResponse, total, shareFolder)
};

/// What `shareFolderList` takes.
struct ListShareFolderReq {
    /// How many are passed over; absent counts as 0.
    std::optional<std::int64_t> offset;
    /// How many at most; absent counts as 0.
    std::optional<std::int64_t> limit;
    std::optional<std::string> keyWord;
    std::optional<std::string> status;
    std::optional<std::int64_t> queryType;

    BASEAPI_FIELDS(ListShareFolderReq, offset, limit, keyWord, status, queryType)
};

/// What `shareFolderList` answers.
struct ShareFolderPageResp : BaseResponse {
    /// How many there are in all.
    std::optional<std::int64_t> total;
    std::optional<std::vector<ShareFolder>> folders;

    BASEAPI_FIELDS_OF(ShareFolderPageResp, BaseResponse, total, folders)
};

/// What `shareFolderAlbumList` takes.
struct GetShareFolderAlbumListReq {
    /// How many are passed over; absent counts as 0.
    std::optional<std::int64_t> offset;
    /// How many at most; absent counts as 0.
    std::optional<std::int64_t> limit;
    std::optional<std::string> keyWord;
    /// A text here, a number in `GetShareFolderDetailReq`.
    std::optional<std::string> shareFolderId;

    BASEAPI_FIELDS(GetShareFolderAlbumListReq, offset, limit, keyWord, shareFolderId)
};

/// An album of a share folder.
struct ShareFolderAlbum {
    std::optional<std::string> creator;
    std::optional<std::string> createTime;
    std::optional<std::string> modifyTime;
    std::optional<std::int64_t> status;
    std::optional<std::string> fileId;
    std::optional<std::string> name;

    BASEAPI_FIELDS(ShareFolderAlbum, creator, createTime, modifyTime, status, fileId, name)
};

/// What `shareFolderAlbumList` answers.
struct ShareFolderAlbumPageResp : BaseResponse {
    /// How many there are in all.
    std::optional<std::int64_t> total;
    std::optional<std::vector<ShareFolderAlbum>> folders;

    BASEAPI_FIELDS_OF(ShareFolderAlbumPageResp, BaseResponse, total, folders)
};

}  // namespace baseapi::inline v1
