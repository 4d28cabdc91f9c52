#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/endpoint_url.h"
#include "baseapi/api/records/images.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A stretch of stored bytes.
struct SliceObject {
    std::optional<std::string> id;
    std::optional<std::int64_t> number;
    std::optional<std::int64_t> start;
    std::optional<std::string> sha256;
    std::optional<std::int64_t> length;
    std::optional<std::string> bucket;
    std::optional<std::string> createdTime;
    std::optional<std::string> modifiedTime;
    std::optional<EndpointURL> uploadUrl;
    std::optional<EndpointURL> downloadUrl;
    std::optional<std::string> uploadId;
    std::optional<FlatMap> attributes;
    std::optional<std::map<std::string, std::string>> properties;
    std::optional<std::vector<Images>> images;

    BASEAPI_FIELDS(SliceObject, id, number, start, sha256, length, bucket, createdTime, modifiedTime,
                   uploadUrl, downloadUrl, uploadId, attributes, properties, images)
};

/// `SliceObject` as file lists have it.
struct FileListSliceObject {
    std::optional<std::string> id;
    std::optional<std::int64_t> start;
    std::optional<EndpointURLMetadata> downloadUrl;
    std::optional<std::vector<Images>> images;

    BASEAPI_FIELDS(FileListSliceObject, id, start, downloadUrl, images)
};

/// `SliceObject` as file details have it.
struct SliceObjectMetadata {
    std::optional<std::string> id;
    std::optional<std::int64_t> start;
    std::optional<EndpointURLMetadata> downloadUrl;
    std::optional<std::vector<Images>> images;

    BASEAPI_FIELDS(SliceObjectMetadata, id, start, downloadUrl, images)
};

}  // namespace baseapi::inline v1
