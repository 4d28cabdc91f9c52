#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "baseapi/api/records/slice_object.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// The stored content of an asset.
struct Resource {
    std::optional<std::string> id;
    std::optional<std::string> hash;
    std::optional<std::int64_t> length;
    std::optional<std::string> sha256;
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> state;
    std::optional<std::int64_t> sliceSize;
    std::optional<std::string> hfek;
    std::optional<std::string> iv;
    std::optional<std::string> createdTime;
    std::optional<std::string> modifiedTime;
    std::optional<SliceObject> object;
    std::optional<EmbeddedMap> attributes;
    std::optional<std::map<std::string, std::string>> properties;

    BASEAPI_FIELDS(Resource, id, hash, length, sha256, type, state, sliceSize, hfek, iv, createdTime,
                   modifiedTime, object, attributes, properties)
};

/// `Resource` as file lists have it.
struct FileListResource {
    std::optional<FileListSliceObject> object;

    BASEAPI_FIELDS(FileListResource, object)
};

/// `Resource` as file details have it.
struct ResourceMetadata {
    std::optional<std::string> id;
    std::optional<std::int64_t> length;
    std::optional<std::string> sha256;
    std::optional<SliceObjectMetadata> object;

    BASEAPI_FIELDS(ResourceMetadata, id, length, sha256, object)
};

}  // namespace baseapi::inline v1
