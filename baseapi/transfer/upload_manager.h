#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "baseapi/core/guarded.h"
#include "baseapi/core/named_operation_queue.h"
#include "baseapi/core/task.h"
#include "baseapi/transfer/upload_process_result.h"
#include "baseapi/transfer/upload_result.h"
#include "baseapi/transfer/upload_task.h"

namespace baseapi::inline v1 {

/// Sends the parts of one file, all through one shared queue, adds up their progress and says when the file
/// is done. A part gets one attempt; one failed part fails the file, and the others still run to their end.
class UploadManager final : public std::enable_shared_from_this<UploadManager> {
  public:
    static constexpr std::string_view TAG = "UploadManager";
    static constexpr int STATE_ERROR = -1;
    static constexpr int STATE_DEFAULT = 0;
    static constexpr int STATE_SUCCESS = 1;

    /// How far one part has come.
    struct ResultData {
        std::int64_t bytesWritten = 0;
        std::int64_t totalBytes = 0;
        std::string hash;
        bool isFinish = false;
        int state = STATE_DEFAULT;

        std::string description() const;
    };

    /// Runs its parts on "NORMAL_T".
    UploadManager() = default;
    /// Runs its parts on a queue that outlives them.
    explicit UploadManager(NamedOperationQueue& queue) : queue_(&queue) {}

    /// Set before `submit`. Called on the main queue; by `submit` itself on its thread after a cancel. After
    /// a cancel the total result may come more than once.
    UploadProcessCallback onTotalCallback;
    /// The total reported with progress. Nobody sets it: progress comes with a total of 0.
    std::int64_t totalLength = 0;
    /// Bytes that were there before this run; told to the log alone.
    std::int64_t hasDownloadSize = 0;

    /// Adds a part, keyed by its sub-hash; before `submit`.
    void add(const std::shared_ptr<UploadTask>& task);

    /// Starts all parts in the order of their keys. Called once, after all parts are there.
    void submit();

    /// Parts that have not started never run; those on the wire run to their end and count as failed. Where
    /// none is on the wire, no total result comes any more. Callable from any thread.
    void cancel();

    /// What every part reports to. A key that was not added is a programming error and ends the process.
    void subCallback(const UploadResult& result);

  private:
    struct Finish {
        int state;
        bool isFinish;
        bool isSuccess;
    };

    void enqueue(const std::shared_ptr<UploadTask>& task);
    static Detached run(std::shared_ptr<UploadManager> self, std::shared_ptr<UploadTask> task,
                        QueuePlace place);
    void onPart(const UploadResult::onProgress& progress);
    void onPart(const UploadResult::onFailure& failure);
    void onPart(const UploadResult::onSuccess& success);
    void finishLater(std::string hash, Finish how);
    void finish(const std::string& hash, Finish how);
    void checkOnComplete();
    void deliver(UploadProcessResult event) const;
    ResultData& resultOf(const std::string& hash);
    void setBytesWritten(ResultData& result, std::int64_t bytesWritten);

    NamedOperationQueue* queue_ = nullptr;
    Guarded<std::map<std::string, std::shared_ptr<UploadTask>>> uploadTaskMap_;
    /// Touched on the main queue alone once the parts have been submitted.
    std::map<std::string, ResultData> resultMap_;
    /// The sum of `bytesWritten` over `resultMap_`.
    std::int64_t bytesWritten_ = 0;
    std::atomic<bool> hasCancel_ = false;
};

}  // namespace baseapi::inline v1
