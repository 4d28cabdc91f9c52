#pragma once

#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// What a search looks for.
struct Filter {
    std::optional<std::string> keyWord;
    std::optional<std::string> containerId;
    std::optional<std::string> parentFolder;
    std::optional<std::string> fileType;
    std::optional<std::string> updateTimeRange;
    std::optional<std::string> ownerId;

    BASEAPI_FIELDS(Filter, keyWord, containerId, parentFolder, fileType, updateTimeRange, ownerId)
};

}  // namespace baseapi::inline v1
