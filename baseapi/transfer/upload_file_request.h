#pragma once

#include <functional>
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

    /// Sends the bytes and gives them up. The answer comes on the delegate queue, or before this returns
    /// where nothing can be sent. Its code 0 says that the transfer ended without a transport error;
    /// otherwise the code is -1 and the message a word.
    void send(std::function<void(BaseResponse)> onAnswer);
};

}  // namespace baseapi::inline v1
