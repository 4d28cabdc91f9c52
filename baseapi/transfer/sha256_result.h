#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/multi_part_info.h"
#include "baseapi/json/record.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// One part of a file, as an `ISliceFile` cuts it.
struct PartInfo {
    /// Not read: the parts are numbered by their place.
    std::int64_t partNumber = 0;
    /// Where the part begins in the file, in bytes.
    std::int64_t partOffset = 0;
    /// In bytes.
    std::int64_t partSize = 0;
    /// The hash's state before the part's first byte. Opaque to the library; it goes to the service as it is.
    std::optional<std::vector<std::uint32_t>> hashCtx;

    BASEAPI_FIELDS(PartInfo, partNumber, partOffset, partSize, hashCtx)
};

/// What `ISliceFile::calcSha256` gives, as JSON text.
struct Sha256Result {
    /// Not read.
    std::optional<std::string> mimeType;
    /// In bytes. Not read: the length sent to the service comes from the file system.
    std::int64_t size = 0;
    /// The hash of the whole file, in whatever text form the service takes; it goes there as it is.
    std::string hash;
    /// In the order of the upload. May be empty.
    std::vector<PartInfo> parts;

    BASEAPI_FIELDS(Sha256Result, mimeType, size, hash, parts)
};

/// The parts as the service takes them: in their order, numbered from 1 by their place.
BASEAPI_API std::vector<MultiPartInfo> multiPartInfos(std::vector<PartInfo> parts);

}  // namespace baseapi::inline v1
