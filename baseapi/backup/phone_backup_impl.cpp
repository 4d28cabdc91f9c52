#include "baseapi/backup/phone_backup_impl.h"

#include <utility>

#include "baseapi/backup/contact_recover_task.h"

namespace baseapi::inline v1 {

bool PhoneBackupImpl::backupAlbum(const std::string&, std::int64_t deviceId, BackupCallback callback) {
    return album_->backup(deviceId, std::move(callback));
}

bool PhoneBackupImpl::backupDirs(const std::string&, std::int64_t deviceId, BackupCallback callback) {
    return dirs_->backup(deviceId, std::move(callback));
}

bool PhoneBackupImpl::backupContact(const std::string&, std::int64_t deviceId, std::int64_t,
                                    BackupResultHandler handler) {
    return contacts_->backup(deviceId, std::move(handler));
}

void PhoneBackupImpl::restoreContact(const std::string& hash, const std::string& recordId, std::int64_t,
                                     ContactCallback callback) {
    const auto task = std::make_shared<ContactRecoverTask>();
    task->hash = hash;
    task->recordId = recordId;
    task->onCallback = std::move(callback);
    task->startRecover();
}

std::shared_ptr<Cancelable> PhoneBackupImpl::getBackupManager(std::string_view moduleCode) {
    if (moduleCode == "100") return dirs_;
    if (moduleCode == "101") return album_;
    if (moduleCode == "102") return contacts_;
    return nullptr;
}

}  // namespace baseapi::inline v1
