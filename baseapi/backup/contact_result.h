#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cases.h"

namespace baseapi::inline v1 {

/// What happens in a restore of contacts. `hash` is the text that the host gave at the start.
struct ContactResult {
    /// The last event of a restore that succeeded, also where the backup held no usable contact.
    struct onSuccess {
        std::string hash;
        std::int64_t code = 0;
        std::string message;
    };
    /// The last event of a restore that failed.
    struct onFailure {
        std::string hash;
        std::int64_t code = 0;
        std::string message;
    };
    /// The share of the file that has arrived, cut to an integer.
    struct onProgress {
        std::string hash;
        std::int64_t percent = 0;
    };

    std::variant<onSuccess, onFailure, onProgress> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the events of a restore, on the thread of the event that caused them: the host's own where the
/// restore ends before it has begun, otherwise the delegate queue and the main queue. What it throws is
/// logged and goes no further.
using ContactCallback = std::function<void(ContactResult)>;

}  // namespace baseapi::inline v1
