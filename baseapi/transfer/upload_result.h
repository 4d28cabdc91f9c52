#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cases.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

/// What one part reports. `hash` is the part's sub-hash.
struct UploadResult {
    struct onSuccess {
        std::string hash;
        BaseResponse response;
    };
    struct onFailure {
        std::string hash;
        std::int64_t code = 0;
        std::string message;
    };
    struct onProgress {
        std::string hash;
        std::int64_t bytesWritten = 0;
        std::int64_t totalBytes = 0;
    };

    std::variant<onSuccess, onFailure, onProgress> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

}  // namespace baseapi::inline v1
