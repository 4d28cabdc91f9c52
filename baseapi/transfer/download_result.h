#pragma once

#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cases.h"
#include "baseapi/core/url.h"

namespace baseapi::inline v1 {

/// How a download ended.
struct DownloadResult {
    /// The file is there, whole.
    struct success {
        /// Where the file lies now: the address that was asked for.
        URL file;
    };
    /// Nothing was put in place of the file.
    struct failure {
        /// The system's own words, such as "Could not resolve host: example.org" or "No space left on
        /// device".
        std::string message;
    };

    std::variant<success, failure> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the share of the file that has arrived, on the delegate queue. Where the size is not known the
/// value is what the division gives, a negative number among others.
using DownloadProgress = std::function<void(double fraction)>;

/// Receives the end of a download, on the main queue. What it throws is logged and goes no further.
using DownloadCompletion = std::function<void(DownloadResult)>;

}  // namespace baseapi::inline v1
