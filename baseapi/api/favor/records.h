#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "baseapi/api/records/attachment.h"
#include "baseapi/api/records/capabilities.h"
#include "baseapi/api/records/download_link.h"
#include "baseapi/api/records/properties.h"
#include "baseapi/api/records/user.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- listing the starred files

/// What `getStarFiles` takes. 0 and empty texts are not sent.
struct GetStarFilesBean {
    std::optional<std::int64_t> pageSize;
    std::optional<std::string> pageCursor;
    std::optional<std::int64_t> sortType;
    std::optional<std::int64_t> sortDirection;
    /// It is not sent.
    std::optional<std::string> fileType;
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(GetStarFilesBean, pageSize, pageCursor, sortType, sortDirection, fileType, imageProcess)
};

/// A starred file.
struct StarFileInfo {
    std::optional<std::string> category;
    std::optional<std::string> id;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    std::optional<std::string> mimeType;
    std::optional<bool> favorite;
    std::optional<bool> recycled;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::map<std::string, std::string>> properties;
    std::optional<std::vector<std::string>> containers;
    std::optional<std::string> createdTime;
    std::optional<std::string> editedTime;
    std::optional<bool> editedByMe;
    std::optional<std::vector<User>> owners;
    std::optional<User> lastEditor;
    std::optional<std::string> fullFileSuffix;
    std::optional<std::string> fileSuffix;
    /// In bytes.
    std::optional<std::int64_t> size;
    std::optional<std::string> sha256;
    std::optional<std::vector<Attachment>> attachments;
    std::optional<std::vector<DownloadLink>> downloadLinks;
    std::optional<PrivateProperties> userProperties;
    std::optional<std::string> starredTime;
    std::optional<std::string> filePath;
    std::optional<std::string> spaceType;
    std::optional<std::int64_t> invalid;
    std::optional<bool> hidden;
    std::optional<UserCapabilities> userCapabilities;

    BASEAPI_FIELDS(StarFileInfo, category, id, fileName, fileType, mimeType, favorite, recycled, parentFolder,
                   properties, containers, createdTime, editedTime, editedByMe, owners, lastEditor,
                   fullFileSuffix, fileSuffix, size, sha256, attachments, downloadLinks, userProperties,
                   starredTime, filePath, spaceType, invalid, hidden, userCapabilities)
};

/// What `getStarFiles` answers.
struct GetStarFilesResponse : BaseResponse {
    std::optional<std::vector<StarFileInfo>> starFileList;
    /// A count.
    std::optional<std::int64_t> autoDeleted;
    /// What the next call takes as `pageCursor`.
    std::optional<std::string> nextCursor;

    BASEAPI_FIELDS_OF(GetStarFilesResponse, BaseResponse, starFileList, autoDeleted, nextCursor)
};

// ---- starring

/// A file to be starred, or no more.
struct StarFileRequest {
    std::optional<std::string> containerId;
    std::optional<std::string> fileId;

    BASEAPI_FIELDS(StarFileRequest, containerId, fileId)
};

/// What `getStarBatch` takes.
struct GetStarBatchBean {
    GetStarBatchBean(bool shallBeStarred, std::vector<StarFileRequest> files)
        : starred(shallBeStarred), subRequestList(std::move(files)) {}
    /// No files, and `starred` false.
    static GetStarBatchBean empty() { return {}; }

    /// What all the files become.
    bool starred = false;
    std::vector<StarFileRequest> subRequestList;

    BASEAPI_FIELDS(GetStarBatchBean, starred, subRequestList)

  private:
    GetStarBatchBean() = default;
};

/// How many files of a batch were changed.
enum class BatchStatus { allSuccess, partialSuccess, allFailed, unknown = -1 };
/// The wire's number of each case, in their order.
constexpr auto wireNumbers(BatchStatus) {
    return std::array{0, 1, 2};
}

/// What became of one file of a batch.
struct SubResponse {
    std::optional<std::string> fileId;
    std::optional<std::string> code;
    std::optional<std::string> message;

    BASEAPI_FIELDS(SubResponse, fileId, code, message)
};

/// What `getStarBatch` answers.
struct GetStarBatchResponse : BaseResponse {
    std::optional<std::vector<SubResponse>> subResponseList;
    BatchStatus status = BatchStatus::unknown;

    BASEAPI_FIELDS_OF(GetStarBatchResponse, BaseResponse, subResponseList, status)
};

// ---- revisions

/// What `updateRevision` takes.
struct UpdateRevisionBean {
    std::optional<std::string> containerId;
    /// It must be there.
    std::optional<std::string> fileId;
    std::optional<std::string> revisionId;
    bool keepForever = false;

    BASEAPI_FIELDS(UpdateRevisionBean, containerId, fileId, revisionId, keepForever)
};

}  // namespace baseapi::inline v1
