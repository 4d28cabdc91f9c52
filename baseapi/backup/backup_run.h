#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/backup/backup_result.h"
#include "baseapi/backup/record_steps.h"
#include "baseapi/backup/result_list.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/core/state_queue.h"
#include "baseapi/core/task.h"
#include "baseapi/core/url.h"
#include "baseapi/net/network_result.h"
#include "baseapi/transfer/upload_operation.h"

namespace baseapi::inline v1 {

/// A backup of many files: what the run of the folders and the run of the album have in common. One object is
/// one run; it keeps itself alive until its last callback.
class BackupRun : public Cancelable, public std::enable_shared_from_this<BackupRun> {
  public:
    /// The host's slicer at the start of the run.
    std::shared_ptr<ISliceFile> iSliceFile;
    /// Set before the start.
    std::optional<std::int64_t> deviceId = 1786182838203243009;
    BackupCallback onCallback;

    /// Starts the run. Without permission it has ended when this returns, otherwise it goes on on other
    /// threads.
    void start() { run(); }

    /// Stops the uploads under way and closes the record with what has been done.
    void cancel() override;

  protected:
    /// What a kind of run says of itself.
    struct Kind {
        BackupModule module;
        std::string_view stateLabel;
        NetworkFailure noPermission;
        /// Logged before the record is created, where there is such a line.
        std::string_view beforeRecord;
        /// How the log names a refused record.
        std::string_view refusedRecord;
    };
    /// The lock that lets the run write, and the record that it writes into.
    struct Record {
        std::string lockId;
        std::optional<std::string> recordId;
    };
    struct Counts {
        std::int64_t succCount = 0;
        std::int64_t failCount = 0;
    };

    explicit BackupRun(Kind kind) : kind_(std::move(kind)), stateQueue_(std::string(kind_.stateLabel)) {}

    /// Finds the files and submits their uploads, on a thread that may wait.
    virtual void backUp(const Record& record) = 0;
    /// Comes between the record and `backUp`, where a run still has to ask the service; false where the run
    /// has ended.
    virtual Task<bool> askFirst(const Record& record);

    bool hasCancel() const;
    /// Whether the run was cancelled; its record is then being closed with the counts so far.
    bool endedByCancel(const Record& record);
    void setTotal(std::int64_t total);
    /// Queues the upload of one file under the key of its result; false after a cancel.
    bool submit(const Record& record, const std::string& key, const std::string& folderId, URL file);
    /// All files have been submitted.
    void submitted(const Record& record);
    /// Closes the record, tells the host and gives the lock back.
    Detached complete(Record record, Counts counts, NetworkFailure outcome);

    std::string_view name() const { return kind_.module.logName; }
    static NetworkFailure userCancel();

  private:
    /// All that several threads of a run look at.
    struct State {
        bool hasCancel = false;
        bool hasAllFileSubmit = false;
        bool hasCallComplete = false;
        std::optional<std::string> recordId;
        /// All files of the run, those that were never submitted included.
        std::int64_t total = 0;
        /// The queue owns them.
        std::vector<std::weak_ptr<UploadOperation>> operationList;
        ResultList resultList;
    };

    Detached run();
    RecordSteps steps() const { return {kind_.module, deviceId}; }
    void onUpload(const Record& record, const std::string& key, const UploadProcessResult& event);
    void onUploadEnd(const Record& record, const std::string& key, std::int64_t code, const std::string& msg);
    void check(const Record& record);
    Counts counts() const;
    void completeOnce(Counts counts, const NetworkFailure& outcome);
    void giveUp(const std::string& lockId, Counts counts, const NetworkFailure& outcome);
    void tell(BackupResult event) const;

    const Kind kind_;
    mutable StateQueue stateQueue_;
    State state_;
};

}  // namespace baseapi::inline v1
