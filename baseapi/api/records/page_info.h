#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// Which page of a list is asked for.
struct PageInfo {
    /// The most entries of one page.
    std::int64_t pageSize = 0;
    /// The cursor that came with the page before; absent for the first page.
    std::optional<std::string> pageCursor;

    /// The most entries of one page.
    std::int64_t getPageSize() const { return pageSize; }
    /// Replaces the most entries of one page.
    void setPageSize(std::int64_t size) { pageSize = size; }
    /// The cursor that came with the page before.
    const std::optional<std::string>& getPageCursor() const { return pageCursor; }
    /// Replaces the cursor; absent for the first page.
    void setPageCursor(std::optional<std::string> cursor) { pageCursor = std::move(cursor); }

    BASEAPI_FIELDS(PageInfo, pageSize, pageCursor)
};

}  // namespace baseapi::inline v1
