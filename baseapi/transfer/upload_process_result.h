#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/api/files/records.h"
#include "baseapi/core/cases.h"

namespace baseapi::inline v1 {

/// What happens in an upload.
///
///     event.visit([](const UploadProcessResult::onSuccess& it) { tell(it.msg); },
///                 [](const auto&) {});
struct UploadProcessResult {
    /// May come any number of times. A failed part counts as sent in full.
    struct onProgress {
        /// Bytes sent so far, of all parts together.
        std::int64_t bytes = 0;
        /// Always 0: the total is not known here.
        std::int64_t total = 0;
    };
    /// The last event of an upload that succeeded: "success", "rapid success" or "exist success".
    struct onSuccess {
        std::int64_t code = 0;
        std::string msg;
    };
    /// The last event of an upload that failed, for whatever cause.
    struct onFailure {
        std::int64_t errCode = 0;
        std::string errMsg;
    };
    /// The service has created the file.
    struct onFileCreate {
        FilesCreateResponse response;
    };
    /// A part has ended.
    struct onItemFinish {
        /// Names the part: its number and its offset, as decimal texts without anything between them.
        std::string subHash;
        /// Always 0.
        std::int64_t index = 0;
        bool isSuccess = false;
    };

    std::variant<onProgress, onSuccess, onFailure, onFileCreate, onItemFinish> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the events of one upload, one after the other, on threads of the library's: the thread that
/// started the upload, the main queue, the delegate queue. What it throws is logged and goes no further.
using UploadProcessCallback = std::function<void(UploadProcessResult)>;

}  // namespace baseapi::inline v1
