#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/multi_part_info.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

/// A file to be created; what `filesCreate` takes, and a backup record with a key more.
struct FilesCreateBean {
    std::optional<std::string> createdTime;
    std::optional<std::string> description;
    std::optional<std::string> mimeType;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::string> sha256;
    /// The size of the file in bytes.
    std::int64_t length = 0;
    std::optional<std::string> uploadMode;
    std::int64_t uploadType = 1;
    std::int64_t autoRename = 2;
    std::optional<std::vector<MultiPartInfo>> multiParts;
    std::optional<std::string> containerId;
    std::optional<std::string> preHash;
    std::optional<std::string> proofCode;
    bool hidden = false;
    std::string scene;

    BASEAPI_FIELDS(FilesCreateBean, createdTime, description, mimeType, fileName, fileType, parentFolder,
                   sha256, length, uploadMode, uploadType, autoRename, multiParts, containerId, preHash,
                   proofCode, hidden, scene)
};

/// What the service answers to a file to be created.
struct FilesCreateResponse : BaseResponse {
    std::optional<std::string> fileId;
    /// The service has the content already: there are no parts to send.
    std::optional<bool> rapidUpload;
    std::optional<std::string> containerId;
    std::optional<std::string> fileName;
    std::optional<std::string> uploadId;
    std::optional<std::vector<std::string>> parentFolder;
    /// The folder has this very file already: there are no parts to send.
    std::optional<bool> exist;
    /// The parts to send, an `uploadUrl` in each.
    std::optional<std::vector<MultiPartInfo>> multiParts;
    std::optional<bool> matchedPreHash;

    BASEAPI_FIELDS_OF(FilesCreateResponse, BaseResponse, fileId, rapidUpload, containerId, fileName, uploadId,
                      parentFolder, exist, multiParts, matchedPreHash)
};

}  // namespace baseapi::inline v1
