#pragma once

#include <memory>
#include <optional>
#include <string>

#include "baseapi/net/base_response.h"
#include "baseapi/net/http_method.h"
#include "baseapi/net/progress_listener.h"
#include "baseapi/platform/http_transport.h"

namespace baseapi::inline v1 {

/// The PUT of one part. `bytes` and `hash` must be there when it is sent.
struct UploadFileRequest {
    HTTPMethod method = HTTPMethod::put;
    std::string url;
    std::optional<ByteBuffer> bytes;
    std::shared_ptr<ProgressListener> progressListener;
    std::optional<std::string> hash;

    /// Sends the bytes, gives them up, and waits for the answer. Code 0 says that the transfer ended without
    /// a transport error; otherwise code -1 and a word.
    BaseResponse send();
};

}  // namespace baseapi::inline v1
