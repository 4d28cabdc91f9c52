#pragma once

#include <map>
#include <optional>
#include <string>

#include "baseapi/net/http_method.h"

namespace baseapi::inline v1 {

/// A request as the frame hands it to the transport: plain data.
struct HTTPRequest {
    std::string baseURL;
    /// The path with its query text behind a "?".
    std::string path;
    HTTPMethod method = HTTPMethod::get;
    std::optional<std::map<std::string, std::string>> headers;
    /// Takes the place of the query in `path`. The frame leaves it absent.
    std::optional<std::map<std::string, std::string>> queryParameters;
    std::optional<std::string> body;
};

}  // namespace baseapi::inline v1
