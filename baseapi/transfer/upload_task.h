#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "baseapi/core/cancelable.h"
#include "baseapi/core/guarded.h"
#include "baseapi/core/operation.h"
#include "baseapi/core/task.h"
#include "baseapi/core/url.h"
#include "baseapi/platform/http_transport.h"
#include "baseapi/transfer/upload_result.h"

namespace baseapi::inline v1 {

/// One part of an upload: reads its bytes and sends them, once.
class UploadTask final : public Cancelable, public std::enable_shared_from_this<UploadTask> {
  public:
    static constexpr std::string_view TAG = "UploadTask";

    /// Receives what the part reports, on the delegate queue or, where nothing was sent, on the thread of
    /// `execute`. May be absent.
    std::function<void(UploadResult)> onCallback;
    /// The part's sub-hash.
    std::string hash1;
    /// The signed address that takes the bytes.
    std::string uploadUrl;
    std::optional<URL> file;
    /// The part's first byte in the file, and how many there are. What lies behind the file's end is left
    /// out.
    std::int64_t offset = 0;
    std::int64_t length = 0;
    std::atomic<bool> hasCancel = false;
    /// The queued block of this task; the queue owns it.
    Guarded<std::weak_ptr<Operation>> operation;

    /// Reads the part on the calling thread, sends it, and ends when it has reported. A file that cannot be
    /// opened and a negative offset are programming errors and end the process.
    Task<void> execute();

    /// A part that has not started never runs and never reports. One on the wire runs to its end and reports
    /// a failure.
    void cancel() override;

    /// For the log.
    std::string description() const;

  private:
    Task<void> send(ByteBuffer bytes);
    ByteBuffer readPart() const;
    void onProgress(const std::string& hash, std::int64_t bytesWritten, std::int64_t totalBytes) const;
    void reportFailure(std::string message) const;
    void report(UploadResult result) const;
};

}  // namespace baseapi::inline v1
