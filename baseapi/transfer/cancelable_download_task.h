#pragma once

#include <memory>
#include <string>

#include "baseapi/core/cancelable.h"
#include "baseapi/platform/http_transport.h"
#include "baseapi/transfer/download_callback.h"

namespace baseapi::inline v1 {

/// An alternative to `ResumableDownloader` that leaves the transfer to its user and brings the cancelling.
/// The library itself makes none.
class CancelableDownloadTask final : public Cancelable {
  public:
    /// The job that drives the download; kept alive, not touched.
    std::shared_ptr<void> currenttask;
    std::string tag;
    std::string url;
    std::string fileId;
    std::string savePath;
    std::string tempPath;
    std::shared_ptr<DownloadCallback> callback;
    /// Whatever the user wants to be kept.
    std::shared_ptr<void> context;
    bool isPaused = false;
    std::shared_ptr<HttpTransport> session;
    std::shared_ptr<HttpTask> downloadTask;

    /// Cancels `downloadTask`, then deletes the file at `tempPath` if there is one; that this failed is only
    /// logged.
    void cancel() override;
};

}  // namespace baseapi::inline v1
