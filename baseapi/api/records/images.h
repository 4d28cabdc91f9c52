#pragma once

#include <optional>
#include <string>

#include "baseapi/api/records/endpoint_url.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A picture made from a file, such as a thumbnail.
struct Images {
    std::optional<std::string> process;
    std::optional<EndpointURLMetadata> downloadUrl;

    BASEAPI_FIELDS(Images, process, downloadUrl)
};

}  // namespace baseapi::inline v1
