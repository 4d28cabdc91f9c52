#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// The order of a list.
struct FileSortInfo {
    std::optional<std::int64_t> sortType;
    std::optional<std::int64_t> sortDirection;

    BASEAPI_FIELDS(FileSortInfo, sortType, sortDirection)
};

/// The order of a search.
struct SortInfo {
    std::optional<std::string> sortType;
    std::optional<std::string> sortDirection;

    BASEAPI_FIELDS(SortInfo, sortType, sortDirection)
};

}  // namespace baseapi::inline v1
