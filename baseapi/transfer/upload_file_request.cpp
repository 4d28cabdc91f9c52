#include "baseapi/transfer/upload_file_request.h"

#include <exception>
#include <utility>

#include "baseapi/net/http_helper.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

void UploadFileRequest::send(std::function<void(BaseResponse)> onAnswer) {
    if (method != HTTPMethod::put) return onAnswer({.code = -1, .msg = "method invalid"});
    if (!bytes || !hash) fatalStop("UploadFileRequest: bytes or hash is absent");
    try {
        HttpHelper::shared().putUploadFile(url, std::move(*bytes), *hash, progressListener, onAnswer);
    } catch (const std::exception&) {
        onAnswer({.code = -1, .msg = "upload error"});
    }
}

}  // namespace baseapi::inline v1
