#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// The base of every response record.
struct BaseResponse {
    /// The service's result code. A response may be a `success` of the call and still hold a non-zero code.
    std::optional<std::int64_t> code;
    /// The service's message.
    std::optional<std::string> msg;
    /// As sent in the body; never the status of the HTTP answer.
    std::optional<std::int64_t> httpCode;

    BASEAPI_FIELDS(BaseResponse, code, msg, httpCode)
};

}  // namespace baseapi::inline v1
