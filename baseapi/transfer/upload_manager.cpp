#include "baseapi/transfer/upload_manager.h"

#include <utility>

#include "baseapi/core/callback.h"
#include "baseapi/core/log.h"
#include "baseapi/core/main_queue.h"
#include "baseapi/core/thread_pool_util.h"
#include "baseapi/json/codec.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

std::string UploadManager::ResultData::description() const {
    return "hash " + hash + ", isFinish " + (isFinish ? "true" : "false") + ", state " +
           std::to_string(state);
}

void UploadManager::add(const std::shared_ptr<UploadTask>& task) {
    resultMap_[task->hash1] = {.totalBytes = task->length, .hash = task->hash1};
    uploadTaskMap_.modify([&](auto& tasks) { tasks[task->hash1] = task; });
}

void UploadManager::submit() {
    if (hasCancel_) return deliver({UploadProcessResult::onFailure{-1, "has cancel"}});
    const auto tasks = uploadTaskMap_.get();
    logLine(TAG, ": uploadManager submit curTask Size = ", tasks.size());
    for (const auto& [hash, task] : tasks) enqueue(task);
}

void UploadManager::enqueue(const std::shared_ptr<UploadTask>& task) {
    logLine("task in ", task->description());
    // The task knows this object only weakly: a task and its manager would otherwise keep each other for
    // good.
    task->onCallback = [manager = weak_from_this()](const UploadResult& result) {
        if (const auto self = manager.lock()) self->subCallback(result);
    };
    auto operation = std::make_shared<BlockOperation>(
        [self = shared_from_this(), task](QueuePlace place) { run(self, task, std::move(place)); });
    task->operation = std::weak_ptr<Operation>(operation);
    (queue_ != nullptr ? *queue_ : ThreadPoolUtil::queue()).addOperation(std::move(operation));
}

/// Keeps the manager, and the part's place in the queue, until the part has reported.
Detached UploadManager::run(std::shared_ptr<UploadManager>, std::shared_ptr<UploadTask> task, QueuePlace) {
    logLine("task execute ", task->description());
    co_await task->execute();
}

void UploadManager::cancel() {
    logLine(TAG, ": UploadManager cancel");
    hasCancel_ = true;
    for (const auto& [hash, task] : uploadTaskMap_.get()) task->cancel();
}

void UploadManager::subCallback(const UploadResult& result) {
    result.visit([this](const auto& report) { onPart(report); });
}

void UploadManager::onPart(const UploadResult::onProgress& progress) {
    logLine("subCallback procress  hash = ", progress.hash, ", current = ", progress.bytesWritten,
            ", total = ", progress.totalBytes);
    onMainQueue([self = shared_from_this(), hash = progress.hash, bytesWritten = progress.bytesWritten] {
        self->setBytesWritten(self->resultOf(hash), bytesWritten);
        self->deliver({UploadProcessResult::onProgress{self->bytesWritten_, self->totalLength}});
    });
}

void UploadManager::onPart(const UploadResult::onFailure& failure) {
    logLine("subCallback failure hash = ", failure.hash, ", code = ", failure.code,
            ", msg = ", failure.message);
    finishLater(failure.hash, {.state = STATE_ERROR, .isFinish = true, .isSuccess = false});
}

void UploadManager::onPart(const UploadResult::onSuccess& success) {
    const bool isSuccess = success.response.code == 0;
    if (const auto text = encode(success.response)) {
        logLine("subCallback success resp = ", *text);
        finishLater(success.hash, {.state = STATE_SUCCESS, .isFinish = true, .isSuccess = isSuccess});
    } else {
        logLine("subCallback success but change json error");
        finishLater(success.hash, {.state = STATE_ERROR, .isFinish = false, .isSuccess = isSuccess});
    }
}

void UploadManager::finishLater(std::string hash, Finish how) {
    onMainQueue([self = shared_from_this(), hash = std::move(hash), how] { self->finish(hash, how); });
}

void UploadManager::finish(const std::string& hash, Finish how) {
    auto& result = resultOf(hash);
    setBytesWritten(result, result.totalBytes);
    result.state = how.state;
    result.isFinish = how.isFinish;
    deliver({UploadProcessResult::onItemFinish{hash, 0, how.isSuccess}});
    checkOnComplete();
}

void UploadManager::checkOnComplete() {
    bool allOk = true;
    for (const auto& [hash, result] : resultMap_) {
        if (!hasCancel_ && (!result.isFinish || result.state == STATE_DEFAULT)) {
            logLine(TAG, ": checkOnComplete return value = ", result.description());
            return;
        }
        // After a cancel the walk also meets parts that have not reported: the file is not whole without
        // them.
        if (result.state != STATE_SUCCESS) allOk = false;
    }
    logLine(TAG, ": checkOnComplete");
    deliver(allOk ? UploadProcessResult{UploadProcessResult::onSuccess{0, "success"}}
                  : UploadProcessResult{UploadProcessResult::onFailure{-1, "upload part failed"}});
}

void UploadManager::deliver(UploadProcessResult event) const {
    invokeCallback(onTotalCallback, std::move(event));
}

UploadManager::ResultData& UploadManager::resultOf(const std::string& hash) {
    const auto found = resultMap_.find(hash);
    if (found == resultMap_.end()) fatalStop("UploadManager: no part has the key " + hash);
    return found->second;
}

void UploadManager::setBytesWritten(ResultData& result, std::int64_t bytesWritten) {
    bytesWritten_ += bytesWritten - result.bytesWritten;
    result.bytesWritten = bytesWritten;
}

}  // namespace baseapi::inline v1
