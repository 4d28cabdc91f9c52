#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/attachment.h"
#include "baseapi/api/records/capabilities.h"
#include "baseapi/api/records/download_link.h"
#include "baseapi/api/records/properties.h"
#include "baseapi/api/records/user.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// What lists and search results have in common. The key "size" is read by the records below alone, each in
/// its own type.
struct BaseFileBean {
    std::optional<std::string> id;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    std::optional<std::string> mimeType;
    std::optional<bool> favorite;
    std::optional<bool> recycled;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::map<std::string, std::string>> properties;
    std::optional<std::vector<User>> owners;
    std::optional<User> lastEditor;
    std::optional<std::string> fileSuffix;
    std::optional<std::vector<DownloadLink>> downloadLinks;
    std::optional<std::string> sha256;
    std::optional<UserCapabilities> userCapabilities;
    std::optional<std::string> idPath;

    BASEAPI_FIELDS(BaseFileBean, id, fileName, fileType, mimeType, favorite, recycled, parentFolder,
                   properties, owners, lastEditor, fileSuffix, downloadLinks, sha256, userCapabilities,
                   idPath)
};

/// A file as lists tell it.
struct FileListMetadata : BaseFileBean {
    std::optional<std::string> recycledTime;
    std::optional<std::vector<std::string>> containers;
    std::optional<std::string> createdTime;
    std::optional<std::string> editedTime;
    std::optional<bool> hidden;
    /// A bool here, a text in `File`.
    std::optional<bool> directlyRecycled;
    std::optional<std::vector<FileListAttachment>> attachments;
    std::optional<PrivateProperties> userProperties;
    /// In bytes.
    std::optional<std::int64_t> size;

    BASEAPI_FIELDS_OF(FileListMetadata, BaseFileBean, recycledTime, containers, createdTime, editedTime,
                      hidden, directlyRecycled, attachments, userProperties, size)
};

/// A file as searches tell it.
struct FileBean : BaseFileBean {
    std::optional<std::string> updateTime;
    std::optional<std::string> namePath;
    std::optional<std::string> teamName;
    std::optional<std::string> teamId;
    std::optional<std::string> containerId;
    std::optional<std::string> containerType;
    std::optional<std::string> owner;
    std::optional<std::string> createdTime;
    std::optional<std::string> editedTime;
    std::optional<std::string> ownerId;
    /// In bytes, as a text.
    std::optional<std::string> size;  // as on the wire
    std::optional<std::vector<Attachment>> attachments;
    std::optional<FileListPrivateProperties> userProperties;

    BASEAPI_FIELDS_OF(FileBean, BaseFileBean, updateTime, namePath, teamName, teamId, containerId,
                      containerType, owner, createdTime, editedTime, ownerId, size, attachments,
                      userProperties)
};

}  // namespace baseapi::inline v1
