#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A file inside an archive.
struct UncompressedFileinfoList {
    std::optional<std::string> code;  // as on the wire
    std::optional<std::string> name;
    std::optional<std::string> type;
    std::optional<std::string> updateAt;
    std::optional<std::string> fileSize;  // as on the wire

    BASEAPI_FIELDS(UncompressedFileinfoList, code, name, type, updateAt, fileSize)
};

/// How far the unpacking of an archive has come.
struct ArchiveData {
    /// One record, for all that its name says.
    std::optional<UncompressedFileinfoList> uncompressedFileList;  // as on the wire
    std::optional<std::string> taskKey;
    /// A document of any kind inside a string.
    std::optional<EmbeddedDocument> taskValue;
    std::optional<std::string> taskId;
    std::int64_t progress = 0;

    BASEAPI_FIELDS(ArchiveData, uncompressedFileList, taskKey, taskValue, taskId, progress)
};

}  // namespace baseapi::inline v1
