#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/attachment.h"
#include "baseapi/api/records/capabilities.h"
#include "baseapi/api/records/download_link.h"
#include "baseapi/api/records/file_bean.h"
#include "baseapi/api/records/files_create.h"
#include "baseapi/api/records/filter.h"
#include "baseapi/api/records/multi_part_info.h"
#include "baseapi/api/records/page_info.h"
#include "baseapi/api/records/sort_info.h"
#include "baseapi/api/records/user.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

/// What `getAccessFiles` takes.
struct GetAccessFilesBean {
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(GetAccessFilesBean, imageProcess)
};

/// A file as the list of recent accesses tells it.
struct AccessiFileInfo {
    std::optional<std::string> id;
    std::optional<std::string> containerId;
    std::optional<std::string> containerName;
    std::optional<std::int64_t> containerType;
    std::optional<std::string> teamId;
    std::optional<std::string> name;
    std::optional<std::string> collaborator;
    std::optional<std::string> collaboratorId;
    std::optional<std::string> collaborateTime;
    std::optional<std::int64_t> collaborateType;
    std::optional<std::string> fileType;
    std::optional<bool> favorite;
    std::optional<std::string> fileSuffix;
    std::optional<std::string> mimeType;
    std::optional<std::vector<DownloadLink>> downloadLinks;
    std::optional<UserCapabilities> userCapabilities;

    BASEAPI_FIELDS(AccessiFileInfo, id, containerId, containerName, containerType, teamId, name, collaborator,
                   collaboratorId, collaborateTime, collaborateType, fileType, favorite, fileSuffix, mimeType,
                   downloadLinks, userCapabilities)
};

/// One access.
struct RecentlyAccess {
    std::optional<std::string> operateTime;
    std::optional<std::int64_t> operateType;
    std::optional<AccessiFileInfo> file;
    std::optional<std::int64_t> status;

    BASEAPI_FIELDS(RecentlyAccess, operateTime, operateType, file, status)
};

/// What `getAccessFiles` answers.
struct GetAccessResponse : BaseResponse {
    std::optional<std::vector<RecentlyAccess>> list;

    BASEAPI_FIELDS_OF(GetAccessResponse, BaseResponse, list)
};

/// One rule of a folder that fills itself.
struct SmartFolderAttr {
    std::optional<std::string> name;
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> sort;
    std::optional<std::string> value;

    BASEAPI_FIELDS(SmartFolderAttr, name, type, sort, value)
};

/// What `createDirectory` takes.
struct CreateDirectoryBean {
    std::optional<std::string> createdTime;
    std::optional<std::string> description;
    std::optional<std::string> mimeType;
    std::optional<std::string> editedTime;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::string> containerId;
    std::int64_t renameMode = 2;
    bool hidden = false;
    std::optional<std::vector<SmartFolderAttr>> smartFolderAttr;
    std::optional<std::string> scene;

    BASEAPI_FIELDS(CreateDirectoryBean, createdTime, description, mimeType, editedTime, fileName, fileType,
                   parentFolder, containerId, renameMode, hidden, smartFolderAttr, scene)
};

/// What `createDirectory` answers.
struct CreateDirectoryResponse : BaseResponse {
    std::optional<std::string> id;
    std::optional<std::string> fileName;
    std::optional<std::string> mimeType;
    /// The id of the folder that has the name already.
    std::optional<std::string> existFileId;

    BASEAPI_FIELDS_OF(CreateDirectoryResponse, BaseResponse, id, fileName, mimeType, existFileId)
};

/// What `fileComplete` takes.
struct FilesCompleteBean {
    std::optional<std::string> fileId;
    std::optional<std::string> sha256;

    BASEAPI_FIELDS(FilesCompleteBean, fileId, sha256)
};

/// What `fileRename` takes.
struct FilesRenameBean {
    /// It goes into the path as well.
    std::optional<std::string> fileId;
    std::optional<std::string> containerId;
    std::optional<std::string> name;
    std::int64_t renameMode = 2;

    BASEAPI_FIELDS(FilesRenameBean, fileId, containerId, name, renameMode)
};

/// What `fileSearch` takes.
struct FilesSearchBean {
    std::optional<std::string> searchType;
    std::optional<PageInfo> pageInfo;
    std::optional<Filter> filter;
    std::optional<SortInfo> sortInfo;
    bool recycled = false;
    bool recursived = false;  // as on the wire
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(FilesSearchBean, searchType, pageInfo, filter, sortInfo, recycled, recursived,
                   imageProcess)
};

/// What `fileSearch` answers.
struct FileSearchResponse : BaseResponse {
    std::optional<std::vector<FileBean>> files;
    std::optional<std::int64_t> total;
    std::optional<std::string> nextPageCursor;

    BASEAPI_FIELDS_OF(FileSearchResponse, BaseResponse, files, total, nextPageCursor)
};

/// What `filesList` takes.
struct FilesListBean {
    /// The kind of list; it goes into the path as well.
    std::optional<std::string> type;
    std::optional<PageInfo> pageInfo;
    std::optional<FileSortInfo> sortInfo;
    std::optional<std::string> containerId;
    std::optional<std::string> parentFileId;
    std::optional<std::string> fileType;
    bool hidden = false;
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(FilesListBean, type, pageInfo, sortInfo, containerId, parentFileId, fileType, hidden,
                   imageProcess)
};

/// What `filesList` answers.
struct FilesListResponse : BaseResponse {
    std::optional<std::vector<FileListMetadata>> files;
    std::optional<std::string> category;
    std::optional<std::string> nextCursor;
    std::optional<bool> searchCompleted;

    BASEAPI_FIELDS_OF(FilesListResponse, BaseResponse, files, category, nextCursor, searchCompleted)
};

/// What `filesPath` takes.
struct FilesPathBean {
    std::optional<std::string> fileId;
    std::optional<std::string> containerId;

    BASEAPI_FIELDS(FilesPathBean, fileId, containerId)
};

/// What `filesPath` answers.
struct FilesPathResponse : BaseResponse {
    std::optional<std::string> fileIdPath;
    std::optional<std::string> namePath;

    BASEAPI_FIELDS_OF(FilesPathResponse, BaseResponse, fileIdPath, namePath)
};

/// What `filesStatsDir` takes.
struct FilesStatsDirBean {
    std::optional<std::string> fileId;
    std::optional<std::string> containerId;
    /// Whether the folders inside are counted too.
    bool recursive = true;

    BASEAPI_FIELDS(FilesStatsDirBean, fileId, containerId, recursive)
};

/// The counts of a folder; texts on the wire.
struct StatsData {
    std::optional<std::string> totalSize;     // as on the wire
    std::optional<std::string> subDirCount;   // as on the wire
    std::optional<std::string> subFileCount;  // as on the wire

    BASEAPI_FIELDS(StatsData, totalSize, subDirCount, subFileCount)
};

/// What `filesStatsDir` answers.
struct FilesStatsDirResponse : BaseResponse {
    std::optional<StatsData> data;

    BASEAPI_FIELDS_OF(FilesStatsDirResponse, BaseResponse, data)
};

/// What `getDownloadUrl` takes.
struct GetDownloadUrlBean {
    std::optional<std::string> containerId;
    std::optional<std::vector<std::string>> fileIds;

    BASEAPI_FIELDS(GetDownloadUrlBean, containerId, fileIds)
};

/// The address of one file of the batch.
struct DownloadInfoResponse {
    std::optional<std::string> fileId;
    std::optional<std::string> fileName;
    /// Where the file's content is.
    std::optional<std::string> url;
    /// The result for this one file; a failure here is none of the call.
    std::optional<std::string> code;  // as on the wire
    std::optional<std::string> msg;

    BASEAPI_FIELDS(DownloadInfoResponse, fileId, fileName, url, code, msg)
};

/// What `getDownloadUrl` answers.
struct GetDownloadUrlResponse : BaseResponse {
    std::optional<std::int64_t> batchCode;
    /// One entry for each of the asked `fileIds`.
    std::optional<std::vector<DownloadInfoResponse>> downloads;

    BASEAPI_FIELDS_OF(GetDownloadUrlResponse, BaseResponse, batchCode, downloads)
};

/// What `getFileDetail` takes.
struct GetFileDetailBean {
    /// It goes into the path as well.
    std::optional<std::string> fileId;
    std::optional<std::string> containerId;
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(GetFileDetailBean, fileId, containerId, imageProcess)
};

/// What `getFileDetail` answers.
struct GetFileDetailResponse : BaseResponse {
    std::optional<std::string> id;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    std::optional<std::string> mimeType;
    std::optional<bool> recycled;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::map<std::string, std::string>> properties;
    std::optional<std::vector<std::string>> containers;
    std::optional<std::string> createdTime;
    std::optional<std::string> editedTime;
    std::optional<std::vector<User>> owners;
    std::optional<User> lastEditor;
    std::optional<std::string> fileSuffix;
    /// In bytes.
    std::optional<std::int64_t> size;
    std::optional<std::vector<AttachmentMetadata>> attachments;
    std::optional<UserCapabilities> userCapabilities;
    std::optional<std::string> sha256;
    std::optional<std::vector<DownloadLink>> downloadLinks;

    BASEAPI_FIELDS_OF(GetFileDetailResponse, BaseResponse, id, fileName, fileType, mimeType, recycled,
                      parentFolder, properties, containers, createdTime, editedTime, owners, lastEditor,
                      fileSuffix, size, attachments, userCapabilities, sha256, downloadLinks)
};

/// What `getUploadUrl` takes.
struct GetUploadUrlBean {
    std::optional<std::string> fileId;
    std::optional<std::vector<MultiPartInfo>> multiParts;

    BASEAPI_FIELDS(GetUploadUrlBean, fileId, multiParts)
};

/// What `getUploadUrl` answers.
struct GetUploadUrlResponse : BaseResponse {
    std::optional<std::vector<MultiPartInfo>> multiParts;

    BASEAPI_FIELDS_OF(GetUploadUrlResponse, BaseResponse, multiParts)
};

/// What `getFilePreviewUrl` takes.
struct GetFilePreviewUrlBean {
    std::optional<std::string> fileId;

    BASEAPI_FIELDS(GetFilePreviewUrlBean, fileId)
};

/// What `getFilePreviewUrl` answers.
struct FileRreviewAndEditLinkResponse : BaseResponse {
    std::optional<std::string> link;

    BASEAPI_FIELDS_OF(FileRreviewAndEditLinkResponse, BaseResponse, link)
};

}  // namespace baseapi::inline v1
