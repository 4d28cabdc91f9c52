#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/json/record.h"

namespace baseapi {

/// Which page of a list is asked for.
struct PageInfo {
    /// The most entries of one page.
    std::int64_t pageSize = 0;
    /// The cursor that came with the page before; absent for the first page.
    std::optional<std::string> pageCursor;

    std::int64_t getPageSize() const { return pageSize; }
    void setPageSize(std::int64_t size) { pageSize = size; }
    const std::optional<std::string>& getPageCursor() const { return pageCursor; }
    void setPageCursor(std::optional<std::string> cursor) { pageCursor = std::move(cursor); }

    BASEAPI_FIELDS(PageInfo, pageSize, pageCursor)
};

}  // namespace baseapi
