#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "baseapi/backup/album_upload_manager.h"
#include "baseapi/backup/backup_result.h"
#include "baseapi/backup/contact_backup_task.h"
#include "baseapi/backup/dirs_upload_manager.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/guarded.h"

namespace baseapi::inline v1 {

/// Holds the run of a module that is under way, refuses a second one, and forwards a cancel.
template <class Run>
class BackupManager : public Cancelable {
  public:
    void cancel() override {
        if (const auto run = task.get()) stop(*run);
    }

  protected:
    /// Makes `run` the one under way; false where there is one.
    bool hold(const std::shared_ptr<Run>& run) {
        bool held = false;
        task.modify([&](auto& current) {
            held = current == nullptr;
            if (held) current = run;
        });
        return held;
    }
    void release() { task.set(nullptr); }

    virtual void stop(Run& run) = 0;

    Guarded<std::shared_ptr<Run>> task;
};

/// The manager of a run that reports by `BackupResult`. It knows the run only until its first result: so it
/// has always been, and hosts start again then.
template <class Run>
class FileBackupManager : public BackupManager<Run> {
  public:
    bool backup(std::int64_t deviceId, BackupCallback callback);

  protected:
    void stop(Run& run) override { run.cancel(); }

  private:
    /// Tells the host of a start that is refused because there is a run.
    virtual void tellRefusal(const BackupCallback& callback) const = 0;
};

class BackupAlbumManager final : public FileBackupManager<AlbumUploadManager> {
    void tellRefusal(const BackupCallback&) const override {}
};

class BackupDirsManager final : public FileBackupManager<DirsUploadManager> {
    void tellRefusal(const BackupCallback& callback) const override;
};

class BackupContactManager final : public BackupManager<ContactBackupTask> {
  public:
    bool backup(std::int64_t deviceId, BackupResultHandler handler);

  protected:
    void stop(ContactBackupTask& run) override { run.setCancelled(true); }
};

}  // namespace baseapi::inline v1
