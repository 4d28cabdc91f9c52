#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/core/guarded.h"
#include "baseapi/core/operation.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/core/task.h"
#include "baseapi/core/url.h"
#include "baseapi/transfer/upload_process_result.h"

namespace baseapi::inline v1 {

/// An upload as an operation of a queue: its place is occupied until the upload has ended, so the width of
/// the queue limits the files in flight. Made as a shared object.
class UploadOperation final : public Operation, public std::enable_shared_from_this<UploadOperation> {
  public:
    /// `onCallback` gets progress and ended parts on the threads of the upload, and `onSuccess` or
    /// `onFailure` last, on the main queue. After `cancel` there is no last event, and an event on its way
    /// may still come.
    UploadOperation(std::string cloudPath, URL file, std::string fileId, std::int64_t autoRename,
                    std::shared_ptr<ISliceFile> sliceFile, UploadProcessCallback onCallback);

    void cancel() override;

  protected:
    void main(QueuePlace place) override;

  private:
    /// The last event; nothing after a cancel.
    using Ending = std::optional<UploadProcessResult>;

    static Detached run(std::shared_ptr<UploadOperation> self, QueuePlace place);
    void begin(std::function<void(Ending)> onEnd);
    void onEvent(const UploadProcessResult& event);
    void end(Ending how);

    const std::string cloudPath_;
    const URL file_;
    const std::string fileId_;
    const std::int64_t autoRename_;
    const std::shared_ptr<ISliceFile> sliceFile_;
    const UploadProcessCallback onCallback_;
    Guarded<std::shared_ptr<Cancelable>> task_;
    std::atomic<bool> hasCancel_ = false;
    Guarded<std::function<void(Ending)>> onEnd_;
};

}  // namespace baseapi::inline v1
