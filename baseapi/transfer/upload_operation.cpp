#include "baseapi/transfer/upload_operation.h"

#include <utility>

#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/log.h"
#include "baseapi/core/main_queue.h"
#include "baseapi/transfer/i_transfer.h"

namespace baseapi::inline v1 {

UploadOperation::UploadOperation(std::string cloudPath, URL file, std::string fileId, std::int64_t autoRename,
                                 std::shared_ptr<ISliceFile> sliceFile, UploadProcessCallback onCallback)
    : cloudPath_(std::move(cloudPath)),
      file_(std::move(file)),
      fileId_(std::move(fileId)),
      autoRename_(autoRename),
      sliceFile_(std::move(sliceFile)),
      onCallback_(std::move(onCallback)) {}

void UploadOperation::main(QueuePlace place) {
    run(shared_from_this(), std::move(place));
}

/// Keeps the operation, and its place in the queue, until the upload has ended.
Detached UploadOperation::run(std::shared_ptr<UploadOperation> self, QueuePlace) {
    const auto ending = co_await callbackOf<Ending>([&](auto onEnd) { self->begin(std::move(onEnd)); });
    if (!ending || self->hasCancel_) co_return;
    onMainQueue([callback = self->onCallback_, event = *ending] { invokeCallback(callback, event); });
}

void UploadOperation::begin(std::function<void(Ending)> onEnd) {
    onEnd_ = std::move(onEnd);
    if (hasCancel_) return end(std::nullopt);
    const auto task = CloudInstance::shared().getTransferImpl().uploadFile(
        cloudPath_, file_, fileId_, autoRename_, sliceFile_,
        [operation = weak_from_this()](const UploadProcessResult& event) {
            if (const auto self = operation.lock()) self->onEvent(event);
        });
    task_ = task;
    if (hasCancel_) task->cancel();  // a cancel that came before the task was known
}

void UploadOperation::cancel() {
    hasCancel_ = true;
    if (const auto task = task_.get()) task->cancel();
    end(std::nullopt);
    Operation::cancel();
}

void UploadOperation::onEvent(const UploadProcessResult& event) {
    if (hasCancel_) return end(std::nullopt);
    event.visit(
        [&](const UploadProcessResult::onProgress& it) {
            logLine("UploadOperation onProgress bytes = ", it.bytes, ", total = ", it.total);
            invokeCallback(onCallback_, event);
        },
        [&](const UploadProcessResult::onSuccess& it) {
            logLine("UploadOperation onSuccess code = ", it.code, ", msg=", it.msg);
            end(event);
        },
        [&](const UploadProcessResult::onFailure& it) {
            logLine("UploadOperation onFailure errCode = ", it.errCode, ", errMsg=", it.errMsg);
            end(event);
        },
        [&](const UploadProcessResult::onFileCreate& it) {
            logLine("UploadOperation onFileCreate _resoponse = ", it.response.fileId.value_or("nil"));
            invokeCallback(onCallback_, event);
        },
        [&](const UploadProcessResult::onItemFinish& it) {
            logLine("UploadOperation onItemFinish subHash = ", it.subHash);
            invokeCallback(onCallback_, event);
        });
}

/// The first end counts.
void UploadOperation::end(Ending how) {
    std::function<void(Ending)> onEnd;
    onEnd_.modify([&](auto& waiting) { std::swap(onEnd, waiting); });
    if (onEnd) onEnd(std::move(how));
}

}  // namespace baseapi::inline v1
