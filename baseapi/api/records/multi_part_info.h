#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// One part of an upload.
struct MultiPartInfo {
    /// Counted from 1.
    std::int64_t partNumber = 0;
    /// In bytes.
    std::int64_t partSize = 0;
    /// Where the part begins in the file, in bytes.
    std::int64_t partOffset = 0;
    /// The hash's state before the part's first byte.
    std::optional<std::vector<std::uint32_t>> hashCtx;
    /// Where the part's bytes are PUT; given by the service.
    std::optional<std::string> uploadUrl;
    std::optional<std::string> partId;

    BASEAPI_FIELDS(MultiPartInfo, partNumber, partSize, partOffset, hashCtx, uploadUrl, partId)
};

/// One part of a file by its place.
struct FilePartInfo {
    std::int64_t partNumber = 0;
    /// In bytes.
    std::int64_t partSize = 0;
    /// Where the part begins in the file, in bytes.
    std::int64_t partOffset = 0;
    std::optional<std::vector<std::int64_t>> hashCtx;

    BASEAPI_FIELDS(FilePartInfo, partNumber, partSize, partOffset, hashCtx)
};

}  // namespace baseapi::inline v1
