#pragma once

#include <map>
#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A signed address with all that a request to it needs.
struct EndpointURL {
    std::optional<std::string> url;
    std::optional<std::string> method;
    std::optional<std::string> partId;
    std::optional<std::map<std::string, std::string>> headers;
    std::optional<std::map<std::string, std::string>> forms;

    BASEAPI_FIELDS(EndpointURL, url, method, partId, headers, forms)
};

/// `EndpointURL` as lists and metadata have it.
struct EndpointURLMetadata {
    std::optional<std::string> url;
    std::optional<std::string> method;

    BASEAPI_FIELDS(EndpointURLMetadata, url, method)
};

}  // namespace baseapi::inline v1
