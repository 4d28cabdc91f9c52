#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/api/records/asset.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// What attachments of all shapes have.
struct BaseAttachment {
    std::optional<std::string> usage;
    std::optional<std::string> hash;
    std::optional<std::string> sha256;

    BASEAPI_FIELDS(BaseAttachment, usage, hash, sha256)
};

/// Content that belongs to a file.
struct Attachment : BaseAttachment {
    std::optional<std::string> assetId;
    std::optional<std::int64_t> length;
    std::optional<std::string> versionId;
    std::optional<std::string> mimeType;
    std::optional<std::string> createdTime;
    std::optional<std::string> modifiedTime;
    std::optional<AnyMap> attributes;
    std::optional<Asset> asset;

    BASEAPI_FIELDS_OF(Attachment, BaseAttachment, assetId, length, versionId, mimeType, createdTime,
                      modifiedTime, attributes, asset)
};

/// `Attachment` as file lists have it.
struct FileListAttachment : BaseAttachment {
    std::optional<FileListAsset> asset;

    BASEAPI_FIELDS_OF(FileListAttachment, BaseAttachment, asset)
};

/// `Attachment` as file details have it.
struct AttachmentMetadata {
    std::optional<std::string> usage;
    std::optional<std::string> hash;
    std::optional<std::string> sha256;
    std::optional<AssetMetadata> asset;

    BASEAPI_FIELDS(AttachmentMetadata, usage, hash, sha256, asset)
};

}  // namespace baseapi::inline v1
