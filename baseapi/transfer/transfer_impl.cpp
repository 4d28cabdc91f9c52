#include "baseapi/transfer/transfer_impl.h"

#include <utility>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/transfer/resumable_downloader.h"
#include "baseapi/transfer/upload_process_task.h"

namespace baseapi {

std::shared_ptr<Cancelable> TransferImpl::downloadFile(const URL& url, const std::string& /*fileId*/,
                                                       const URL& localPath, DownloadProgress progress,
                                                       DownloadCompletion completion) {
    auto downloader = std::make_shared<ResumableDownloader>(url, localPath, "com.resumable.download");
    downloader->start(std::move(progress), std::move(completion));
    return downloader;
}

std::shared_ptr<Cancelable> TransferImpl::uploadFile(std::optional<std::string> cloudPath, URL file,
                                                     const std::string& /*fileId*/,
                                                     std::int64_t /*autoRename*/,
                                                     std::shared_ptr<ISliceFile> sliceFile,
                                                     UploadProcessCallback onCallback) {
    auto task = std::make_shared<UploadProcessTask>();
    task->defaultSliceFile = std::move(sliceFile);
    task->onCallback = std::move(onCallback);
    task->cloudPath = std::move(cloudPath);
    task->containId = CloudInstance::shared().contentId.get();
    task->file = std::move(file);
    task->run();
    return task;
}

}  // namespace baseapi
