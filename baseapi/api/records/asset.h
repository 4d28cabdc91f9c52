#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "baseapi/api/records/cipher.h"
#include "baseapi/api/records/resource.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// What an attachment consists of.
struct Asset {
    std::optional<std::string> id;
    std::optional<std::string> versionId;
    std::optional<std::int64_t> version;
    std::optional<std::string> mimeType;
    std::optional<std::int64_t> keepPolicy;
    std::optional<std::int64_t> state;
    std::optional<std::string> createdTime;
    std::optional<std::string> modifiedTime;
    std::optional<std::string> lastModifyingUser;
    std::optional<Resource> resource;
    std::optional<Cipher> cipher;
    std::optional<AnyMap> attributes;
    std::optional<std::map<std::string, std::string>> properties;

    BASEAPI_FIELDS(Asset, id, versionId, version, mimeType, keepPolicy, state, createdTime, modifiedTime,
                   lastModifyingUser, resource, cipher, attributes, properties)
};

/// `Asset` as file lists have it.
struct FileListAsset {
    std::optional<std::string> mimeType;
    std::optional<FileListResource> resource;

    BASEAPI_FIELDS(FileListAsset, mimeType, resource)
};

/// `Asset` as file details have it.
struct AssetMetadata {
    std::optional<std::string> id;
    std::optional<std::string> versionId;
    std::optional<std::int64_t> version;
    std::optional<std::string> mimeType;
    std::optional<std::int64_t> state;
    std::optional<std::string> createdTime;
    std::optional<std::string> modifiedTime;
    std::optional<ResourceMetadata> resource;
    std::optional<EmbeddedMap> attributes;

    BASEAPI_FIELDS(AssetMetadata, id, versionId, version, mimeType, state, createdTime, modifiedTime,
                   resource, attributes)
};

}  // namespace baseapi::inline v1
