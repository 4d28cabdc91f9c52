#include "baseapi/backup/backup_managers.h"

#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"

namespace baseapi::inline v1 {

template <class Run>
bool FileBackupManager<Run>::backup(std::int64_t deviceId, BackupCallback callback) {
    const auto slicer = CloudInstance::shared().sliceFile.get();
    const auto run = std::make_shared<Run>();
    run->iSliceFile = slicer;
    run->deviceId = deviceId;
    run->onCallback = [this, callback](BackupResult result) {
        invokeCallback(callback, std::move(result));
        this->release();
    };
    if (!this->hold(run)) {
        tellRefusal(callback);
        return false;
    }
    if (!slicer) {
        this->release();
        invokeCallback(callback, BackupResult{BackupResult::onComplete{0, 0, Constants::BACKUP_PARAMS_INVALID,
                                                                       "no slice file"}});
        return false;
    }
    run->start();
    return true;
}

template class FileBackupManager<AlbumUploadManager>;
template class FileBackupManager<DirsUploadManager>;

void BackupDirsManager::tellRefusal(const BackupCallback& callback) const {
    invokeCallback(callback, BackupResult{BackupResult::onComplete{0, 0, Constants::BACKUP_HAS_TASK_RUNNING,
                                                                   "has task"}});
}

bool BackupContactManager::backup(std::int64_t deviceId, BackupResultHandler handler) {
    const auto run = std::make_shared<ContactBackupTask>();
    run->deviceId = deviceId;
    run->onCallback = {
        [this, onComplete = std::move(handler.onComplete)](BackupContactResult result) {
            release();
            invokeCallback(onComplete, std::move(result));
        },
        std::move(handler.onProgress),
    };
    if (!hold(run)) return false;
    run->start();
    return true;
}

}  // namespace baseapi::inline v1
