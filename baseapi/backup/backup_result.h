#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cases.h"

namespace baseapi::inline v1 {

/// What happens in a backup of folders or of the album.
struct BackupResult {
    /// The run is over; comes at most once. With `code` 0 the record was closed, and `failCount` can be above
    /// 0 all the same.
    struct onComplete {
        std::int64_t succCount = 0;
        std::int64_t failCount = 0;
        std::int64_t code = 0;
        std::string msg;
    };
    /// A file has ended; may come any number of times, after `onComplete` too.
    struct onProgress {
        std::int64_t succCount = 0;
        std::int64_t failCount = 0;
    };

    std::variant<onComplete, onProgress> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the events of a run, on the thread of the event that caused them: the host's own in `backupDirs`
/// and in `cancel`, and threads of the library's. What it throws is logged and goes no further.
using BackupCallback = std::function<void(BackupResult)>;

}  // namespace baseapi::inline v1
