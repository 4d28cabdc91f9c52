#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cases.h"

namespace baseapi::inline v1 {

/// How a backup of the contacts ended.
struct BackupContactResult {
    /// The backup has ended well.
    struct success {
        std::int64_t code = 0;
        std::string message;
    };
    /// The backup has failed, or was cancelled.
    struct failure {
        std::int64_t errorCode = 0;
        std::string errorMessage;
    };

    std::variant<success, failure> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// How far a backup of the contacts is.
struct BackupProgress {
    /// Always empty.
    std::string hash;
    /// 0 to 100.
    std::int64_t percent = 0;
};

/// Receives what happens in a backup of the contacts, on the thread of the event that caused it: the host's
/// own where the run ends before it has begun, otherwise threads of the library's. What they throw is logged
/// and goes no further.
struct BackupResultHandler {
    /// Comes once; after a cancel in mid-upload it may come again.
    std::function<void(BackupContactResult)> onComplete;
    /// May come any number of times.
    std::function<void(BackupProgress)> onProgress;
};

}  // namespace baseapi::inline v1
