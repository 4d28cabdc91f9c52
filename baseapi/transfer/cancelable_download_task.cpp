#include "baseapi/transfer/cancelable_download_task.h"

#include <filesystem>
#include <system_error>

#include "baseapi/core/log.h"

namespace baseapi::inline v1 {

void CancelableDownloadTask::cancel() {
    if (downloadTask) downloadTask->cancel();
    std::error_code error;
    std::filesystem::remove(tempPath, error);
    if (error) logLine("cancel file error = ", error.message());
}

}  // namespace baseapi::inline v1
