#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "baseapi/backup/backup_contact_result.h"
#include "baseapi/backup/backup_result.h"
#include "baseapi/backup/contact_result.h"
#include "baseapi/core/cancelable.h"

namespace baseapi::inline v1 {

/// Backs up the album, the folders and the contacts of a phone, and restores the contacts. Reached through
/// `CloudInstance::shared().getPhoneBackupImpl()`; callable from any thread.
///
/// A run takes `sliceFile`, `token` and `contentId` of `CloudInstance` as it needs them, and keeps itself
/// alive until its last event. Results come on the thread of the event that caused them, never on a fixed
/// queue. A text or a number that has no name below is accepted and has no effect.
class IPhoneBackup {
  public:
    virtual ~IPhoneBackup() = default;

    /// Backs up the photo library for the device. False where a backup of the album has begun and not yet
    /// reported; nothing is delivered then. The run has ended when this returns where there is no permission
    /// or no `sliceFile`: the callback has got its `onComplete` then.
    virtual bool backupAlbum(const std::string&, std::int64_t deviceId, BackupCallback callback) = 0;

    /// Backs up the folders that the service lists as the device's scopes; as `backupAlbum`, but a refused
    /// start delivers `onComplete(0, 0, 100025, "has task")`.
    virtual bool backupDirs(const std::string&, std::int64_t deviceId, BackupCallback callback) = 0;

    /// Backs up the address book. False where a backup of the contacts is under way; nothing is delivered
    /// then.
    virtual bool backupContact(const std::string&, std::int64_t deviceId, std::int64_t,
                               BackupResultHandler handler) = 0;

    /// Brings the contacts of the record back into the address book. `hash` comes back with every event. A
    /// restore cannot be cancelled, and several may run at once.
    virtual void restoreContact(const std::string& hash, const std::string& recordId, std::int64_t,
                                ContactCallback callback) = 0;

    /// What cancels the run of a module: "100" folders, "101" album, "102" contacts; nothing for every other
    /// code. It lives as long as the process. A run of folders or of the album is out of its reach once it
    /// has reported.
    virtual std::shared_ptr<Cancelable> getBackupManager(std::string_view moduleCode) = 0;
};

}  // namespace baseapi::inline v1
