#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A link to a file's content or to what was made from it, as `usage` says.
struct DownloadLink {
    std::optional<std::string> usage;
    std::optional<std::string> downloadLink;
    std::optional<std::int64_t> version;

    BASEAPI_FIELDS(DownloadLink, usage, downloadLink, version)
};

}  // namespace baseapi::inline v1
