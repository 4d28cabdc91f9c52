#pragma once

#include <memory>

#include "baseapi/backup/backup_managers.h"
#include "baseapi/backup/i_phone_backup.h"

namespace baseapi::inline v1 {

/// Hands each operation to the one manager of its module.
class PhoneBackupImpl final : public IPhoneBackup {
  public:
    bool backupAlbum(const std::string&, std::int64_t deviceId, BackupCallback callback) override;
    bool backupDirs(const std::string&, std::int64_t deviceId, BackupCallback callback) override;
    bool backupContact(const std::string&, std::int64_t deviceId, std::int64_t,
                       BackupResultHandler handler) override;
    void restoreContact(const std::string& hash, const std::string& recordId, std::int64_t,
                        ContactCallback callback) override;
    std::shared_ptr<Cancelable> getBackupManager(std::string_view moduleCode) override;

  private:
    const std::shared_ptr<BackupAlbumManager> album_ = std::make_shared<BackupAlbumManager>();
    const std::shared_ptr<BackupDirsManager> dirs_ = std::make_shared<BackupDirsManager>();
    const std::shared_ptr<BackupContactManager> contacts_ = std::make_shared<BackupContactManager>();
};

}  // namespace baseapi::inline v1
