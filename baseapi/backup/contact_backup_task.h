#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/backup/backup_contact_result.h"
#include "baseapi/backup/record_steps.h"
#include "baseapi/core/state_queue.h"
#include "baseapi/core/task.h"
#include "baseapi/core/url.h"
#include "baseapi/transfer/upload_process_result.h"

namespace baseapi::inline v1 {

/// A backup of the whole address book, as one vCard file in a record of its own. One object is one run; it
/// keeps itself alive until its last callback.
class ContactBackupTask final : public std::enable_shared_from_this<ContactBackupTask> {
  public:
    /// Set before the start, as are the callbacks.
    std::optional<std::int64_t> deviceId = 1793456338819410049;
    BackupResultHandler onCallback;

    /// Starts the run and returns at once. Without permission it has ended by then.
    void start();
    /// Asks the run to stop at its next step; an upload under way is not interrupted.
    void setCancelled(bool cancelled);

  private:
    /// What the upload and the closing of the record need.
    struct Upload {
        std::string lockId;
        std::string recordId;
        std::int64_t contactCount = 0;
        /// Of the vCard file, in bytes.
        std::int64_t size = 0;
    };

    Detached run();
    RecordSteps steps() const;
    void upload(const Upload& upload, const std::string& folderId, const URL& file);
    void onUpload(const Upload& upload, const UploadProcessResult& event);
    void tellProgress(std::int64_t bytes, std::int64_t total) const;
    /// Closes the record, tells the host and gives the lock back.
    Detached completeRecord(Upload upload, std::int64_t count, NetworkFailure outcome);
    /// The end of a run that has no record.
    void executeResult(const NetworkFailure& failure, const std::string& lockId);
    void deliverResult(BackupContactResult result) const;
    bool hasCancel() const;

    mutable StateQueue stateQueue_{"com.contactuploadmanager.state"};
    bool hasCancel_ = false;
};

}  // namespace baseapi::inline v1
