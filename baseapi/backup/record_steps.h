#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/task.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// How a kind of backup is known to the service, to the preferences and in the log.
struct BackupModule {
    std::string_view logName;
    std::string_view moduleCode;
    /// The preferences' key of the lock id.
    std::string_view lockKey;
};

/// What a closed record says of its run, as its `properties`.
struct RecordCounts {
    std::int64_t backupCount = 0;
    std::int64_t successCount = 0;
    std::int64_t failedCount = 0;
    std::int64_t errorCode = 0;

    BASEAPI_FIELDS(RecordCounts, backupCount, successCount, failedCount, errorCode)
};

/// The steps that every kind of backup takes in the same way: one lock, one record, and their end.
class RecordSteps {
  public:
    /// The id that a step has brought, or why there is none.
    struct Outcome {
        std::optional<std::string> id;
        NetworkFailure failure;
        /// The service has answered, and refused.
        bool answered = false;
    };

    /// Code and message of a run's end. A failure may have the code 0, where a refusal brings it.
    struct Ending {
        std::int64_t code = 0;
        std::string message;
        bool succeeded = false;
    };

    RecordSteps(const BackupModule& module, std::optional<std::int64_t> deviceId)
        : module_(module), deviceId_(deviceId) {}

    /// The id of the lock taken last, by this run or an earlier one; empty where there is none.
    std::string rememberedLock() const;
    /// Gives the lock back, and waits for the answer without looking at it: a lock that an interrupted run
    /// has left must not stand in the way of this one.
    Task<void> releaseLock(std::string lockId) const;
    /// Asks for the lock; what came, `lockOutcome` says.
    Task<NetworkResult<CreateBackupLockResponse>> takeLock() const;
    /// Remembers the lock that the answer brings, so that whatever happens now, the next run can give it
    /// back.
    void rememberLock(const NetworkResult<CreateBackupLockResponse>& answer) const;
    /// The same, with a log line.
    Outcome lockOutcome(const NetworkResult<CreateBackupLockResponse>& answer) const;
    /// Deletes old records; whether that worked does not matter.
    Task<void> pruneRecords(std::string lockId) const;
    /// Makes the run's record.
    Task<Outcome> createRecord(std::string lockId) const;
    /// Closes the record and gives the run's end: its own failure goes before what the service says of the
    /// closing.
    Task<Ending> closeRecord(std::string lockId, std::string recordId, RecordCounts counts,
                             std::string message) const;

    /// Logs a refused step in the way of all steps.
    void logRefusal(std::string_view step, const NetworkFailure& failure) const;

  private:
    const BackupModule module_;
    const std::optional<std::int64_t> deviceId_;
};

}  // namespace baseapi::inline v1
