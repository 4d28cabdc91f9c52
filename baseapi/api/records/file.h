#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/attachment.h"
#include "baseapi/api/records/capabilities.h"
#include "baseapi/api/records/download_link.h"
#include "baseapi/api/records/properties.h"
#include "baseapi/api/records/user.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"
#include "baseapi/json/shared.h"

namespace baseapi::inline v1 {

/// A file as the synchronisation of folders tells it. Times are texts as the service sends them.
struct File {
    std::optional<std::string> category;
    std::optional<std::string> id;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    std::optional<std::string> mimeType;
    std::optional<std::string> description;
    bool favorite = false;
    bool hidden = false;
    bool recycled = false;
    /// A text here, a bool in `FileListMetadata`.
    std::optional<std::string> directlyRecycled;  // as on the wire
    Shared<User> recyclingUser;
    std::optional<std::string> recycledTime;
    Shared<std::vector<std::string>> parentFolder;
    Shared<AnyMap> properties;
    Shared<AnyMap> appSettings;
    Shared<std::vector<std::string>> containers;
    std::int64_t version = 0;
    std::optional<std::string> createdTime;
    std::optional<std::string> editedTime;
    std::optional<std::string> editedByMeTime;
    bool editedByMe = false;
    std::optional<std::string> sharedWithMeTime;
    Shared<User> sharer;
    Shared<std::vector<User>> owners;
    Shared<User> lastEditor;
    bool hasShared = false;
    bool ownedByMe = false;
    Shared<CapabilitiesEx> capabilities;
    bool viewersHasCopyContentPermission = false;
    bool writerHasCopyPermission = false;
    bool writersHasSharePermission = false;
    std::optional<std::string> originalFilename;
    std::optional<std::string> fullFileSuffix;
    std::optional<std::string> fileSuffix;
    /// In bytes.
    std::int64_t size = 0;
    std::optional<std::string> sha256;
    std::optional<std::string> lastHistoryVersionId;
    Shared<std::vector<Attachment>> attachments;
    std::optional<std::string> iconDownloadLink;
    std::optional<std::string> existThumbnail;
    std::optional<std::string> privateKey;
    std::optional<std::string> signedDownloadLink;
    Shared<std::vector<DownloadLink>> downloadLinks;
    std::optional<std::string> localPath;
    std::optional<std::string> sortName;
    Shared<PrivateProperties> userProperties;
    std::optional<std::string> creatingUser;

    /// A missing key leaves the default in place, so that a sparse object always decodes.
    static constexpr bool lenient = true;

    /// The same value in every field; nested records, arrays and maps are shared with this object.
    File copy() const { return *this; }

    BASEAPI_FIELDS(File, category, id, fileName, fileType, mimeType, description, favorite, hidden, recycled,
                   directlyRecycled, recyclingUser, recycledTime, parentFolder, properties, appSettings,
                   containers, version, createdTime, editedTime, editedByMeTime, editedByMe, sharedWithMeTime,
                   sharer, owners, lastEditor, hasShared, ownedByMe, capabilities,
                   viewersHasCopyContentPermission, writerHasCopyPermission, writersHasSharePermission,
                   originalFilename, fullFileSuffix, fileSuffix, size, sha256, lastHistoryVersionId,
                   attachments, iconDownloadLink, existThumbnail, privateKey, signedDownloadLink,
                   downloadLinks, localPath, sortName, userProperties, creatingUser)
};

}  // namespace baseapi::inline v1
