#include "baseapi/transfer/transfer_impl.h"

#include <utility>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/transfer/backup_upload_process_task.h"
#include "baseapi/transfer/resumable_downloader.h"
#include "baseapi/transfer/upload_process_task.h"

namespace baseapi::inline v1 {
namespace {

std::shared_ptr<Cancelable> startUpload(std::shared_ptr<UploadProcess> task,
                                        std::optional<std::string> cloudPath, URL file,
                                        std::shared_ptr<ISliceFile> sliceFile,
                                        UploadProcessCallback onCallback) {
    task->defaultSliceFile = std::move(sliceFile);
    task->onCallback = std::move(onCallback);
    task->cloudPath = std::move(cloudPath);
    task->containId = CloudInstance::shared().contentId.get();
    task->file = std::move(file);
    task->run();
    return task;
}

}  // namespace

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
    return startUpload(std::make_shared<UploadProcessTask>(), std::move(cloudPath), std::move(file),
                       std::move(sliceFile), std::move(onCallback));
}

std::shared_ptr<Cancelable> TransferImpl::backupUploadFile(
    std::string cloudPath, URL file, const std::string& /*fileId*/, std::string recordId, std::string lockId,
    std::int64_t /*autoRename*/, std::shared_ptr<ISliceFile> sliceFile, UploadProcessCallback onCallback) {
    auto task = std::make_shared<BackupUploadProcessTask>();
    task->recordId = std::move(recordId);
    task->lockId = std::move(lockId);
    return startUpload(std::move(task), std::move(cloudPath), std::move(file), std::move(sliceFile),
                       std::move(onCallback));
}

}  // namespace baseapi::inline v1
