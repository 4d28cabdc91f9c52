#include <utility>

#include "baseapi/core/log.h"
#include "baseapi/net/http_helper.h"
#include "baseapi/net/upload_bean.h"
#include "baseapi/net/url_check.h"

namespace baseapi::inline v1 {
namespace {

UploadRequest putRequest(const std::string& url, ByteBuffer data) {
    UploadRequest request;
    request.url = url;
    request.headers = {{"Content-Type", "application/octet-stream"},
                       {"Content-Length", std::to_string(data.size)}};
    request.data = std::move(data);
    return request;
}

const char* presence(bool present) {
    return present ? "present" : "nil";
}

}  // namespace

void HttpHelper::putUploadFile(const std::string& url, ByteBuffer data, const std::string& hash,
                               std::shared_ptr<ProgressListener> progressListener,
                               std::function<void(BaseResponse)> continuation) {
    logLine("putUploadFile bytes size = ", data.size);
    logLine("putUploadFile hash = ", hash);
    if (!isURL(url)) {
        logLine("无效的URL: ", url);
        return continuation({.code = -1, .msg = "url invalid"});
    }
    // The callbacks know their task by its identifier, which there is only once the task is made.
    const auto identifier = std::make_shared<std::int64_t>();
    const auto task = session_.uploadTask(
        putRequest(url, std::move(data)),
        [this, identifier](std::int64_t sent, std::int64_t expected) {
            didSendBodyData(*identifier, sent, expected);
        },
        [this, identifier](const std::optional<TransportError>& error) { didComplete(*identifier, error); });
    *identifier = task->identifier();

    logLine("==============XXXXXX====start===========", *identifier, "===============");
    registerUpload(*identifier,
                   std::make_shared<UploadBean>(UploadBean{std::move(progressListener), hash,
                                                           FinalCallback(std::move(continuation))}));
    try {
        task->resume();
    } catch (...) {
        // Whoever takes the upload off the list answers for it.
        if (removeUpload(*identifier)) throw;
    }
}

void HttpHelper::registerUpload(std::int64_t identifier, std::shared_ptr<UploadBean> bean) {
    const auto count = uploadTasksQueue_.write([&] {
        uploadTasks_[identifier] = std::move(bean);
        return uploadTasks_.size();
    });
    logLine("设置任务成功: ", identifier, ", 当前任务数: ", count);
}

std::shared_ptr<UploadBean> HttpHelper::findUpload(std::int64_t identifier) const {
    return uploadTasksQueue_.read([&] {
        const auto found = uploadTasks_.find(identifier);
        return found != uploadTasks_.end() ? found->second : nullptr;
    });
}

bool HttpHelper::removeUpload(std::int64_t identifier) {
    return uploadTasksQueue_.write([&] { return uploadTasks_.erase(identifier); }) > 0;
}

void HttpHelper::didSendBodyData(std::int64_t identifier, std::int64_t sent, std::int64_t expected) const {
    const auto bean = findUpload(identifier);
    const auto hash = bean ? bean->hash : std::nullopt;
    logLine("========== ", hash ? *hash : "nil", "=========totalBytesSent = ", sent,
            " , totalBytesExpectedToSend = ", expected);
    if (bean && bean->process) bean->process->onProgress(hash.value_or(""), sent, expected);
}

void HttpHelper::didComplete(std::int64_t identifier, const std::optional<TransportError>& error) {
    const auto bean = findUpload(identifier);
    logLine("==============XXXXXX====didCompleteWithError===========", identifier,
            ", continuation = ", presence(bean && bean->continuation),
            ", bean = ", presence(bean != nullptr));
    if (!removeUpload(identifier) || !bean || !bean->continuation) return;
    (*bean->continuation)(error ? BaseResponse{.code = -1, .msg = error->text}
                                : BaseResponse{.code = 0, .msg = "success"});
}

}  // namespace baseapi::inline v1
