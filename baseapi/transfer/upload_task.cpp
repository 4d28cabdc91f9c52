#include "baseapi/transfer/upload_task.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

#include "baseapi/core/log.h"
#include "baseapi/net/progress_listener.h"
#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/memory_size.h"
#include "baseapi/platform/worker_pool.h"
#include "baseapi/transfer/local_file.h"
#include "baseapi/transfer/upload_file_request.h"

namespace baseapi::inline v1 {
namespace {

LocalFile openAssumed(const URL& file) try {
    return LocalFile(file);
} catch (const std::system_error& error) {
    fatalStop(error.what());
}

}  // namespace

Task<void> UploadTask::execute() {
    logLine(TAG, ": 开始执行上传任务");
    if (!file || uploadUrl.empty()) {
        logLine(TAG, ": file or uploadUrl is null");
        co_return reportFailure("invalid params");
    }
    if (hasCancel) {
        logLine(TAG, ": upload has cancel");
        co_return reportFailure("has cancel");
    }
    logLine(TAG, ": start upload, hash = ", hash1);
    ByteBuffer bytes;
    try {
        bytes = readPart();
    } catch (const std::exception& error) {
        logLine(TAG, ": IOException ", error.what());
        co_return reportFailure(std::string("file exception ") + error.what());
    }
    co_await send(std::move(bytes));
}

ByteBuffer UploadTask::readPart() const {
    if (offset < 0) fatalStop("UploadTask: the offset is negative");
    const LongWork reading;
    LocalFile source = openAssumed(*file);
    // A part is never longer than what is left of the file, whatever the service says.
    const auto size = std::max<std::int64_t>(source.seekToEnd() - offset, 0);
    ByteBuffer bytes;
    bytes.size = memorySize(static_cast<std::uint64_t>(std::clamp<std::int64_t>(length, 0, size)));
    bytes.data = std::make_unique_for_overwrite<char[]>(bytes.size);
    bytes.size = source.readAt(offset, bytes.data.get(), bytes.size);
    return bytes;
}

Task<void> UploadTask::send(ByteBuffer bytes) {
    UploadFileRequest request;
    request.url = uploadUrl;
    request.bytes = std::move(bytes);
    request.hash = hash1;
    request.progressListener = std::make_shared<ProgressHandler>(
        weak_from_this(), [self = shared_from_this()](const auto& hash, auto bytesWritten, auto totalBytes) {
            self->onProgress(hash, bytesWritten, totalBytes);
        });
    const auto response =
        co_await callbackOf<BaseResponse>([&](auto onAnswer) { request.send(std::move(onAnswer)); });

    const std::string msg = response.msg.value_or("nil");
    if (hasCancel) {
        logLine(TAG, ": has response but is cancel");
        reportFailure("has cancel");
    } else if (response.code == 0) {
        logLine(TAG, ": onSuccess ret = ", msg);
        report({UploadResult::onSuccess{hash1, response}});
    } else {
        logLine(TAG, ": onFailure ret = ", msg);
        reportFailure("upload sync error");
    }
}

void UploadTask::cancel() {
    logLine("UploadTask cancel");
    hasCancel = true;
    if (const auto queued = operation.get().lock()) queued->cancel();
}

std::string UploadTask::description() const {
    return "UploadTask hash " + hash1 + ", offset " + std::to_string(offset) + ", length " +
           std::to_string(length);
}

void UploadTask::onProgress(const std::string& hash, std::int64_t bytesWritten,
                            std::int64_t totalBytes) const {
    logLine(TAG, ": onProgress - ", hash, ", bytesWritten = ", bytesWritten, ", totalBytes = ", totalBytes);
    report({UploadResult::onProgress{hash, bytesWritten, totalBytes}});
}

void UploadTask::reportFailure(std::string message) const {
    report({UploadResult::onFailure{hash1, -1, std::move(message)}});
}

void UploadTask::report(UploadResult result) const {
    if (onCallback) onCallback(std::move(result));
}

}  // namespace baseapi::inline v1
