#pragma once

#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A file by its id and container.
struct FileIdInfo {
    std::optional<std::string> fileId;
    std::optional<std::string> containerId;

    BASEAPI_FIELDS(FileIdInfo, fileId, containerId)
};

}  // namespace baseapi::inline v1
