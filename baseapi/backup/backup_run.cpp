#include "baseapi/backup/backup_run.h"

#include <utility>

#include "baseapi/backup/album_helper.h"
#include "baseapi/core/background.h"
#include "baseapi/core/backup_thread_pool_util.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"

namespace baseapi::inline v1 {

// The run, in the order of its calls to the service.

Detached BackupRun::run() {
    const auto self = shared_from_this();
    const auto service = steps();
    if (!AlbumHelper::checkPhotoLibraryPermission()) {
        logLine(name(), " no permission");
        completeOnce({}, kind_.noPermission);
        co_return;
    }
    co_await background();
    co_await service.releaseLock(service.rememberedLock());

    const auto lock = service.lockOutcome(co_await service.takeLock());
    if (!lock.id) {
        completeOnce({}, lock.failure);
        co_return;
    }
    co_await service.pruneRecords(*lock.id);

    if (!kind_.beforeRecord.empty()) logLine(kind_.beforeRecord);
    const auto created = co_await service.createRecord(*lock.id);
    if (!created.id) {
        giveUp(*lock.id, {}, created.failure);
        if (created.answered) service.logRefusal(kind_.refusedRecord, created.failure);
        co_return;
    }
    stateQueue_.write([&] { state_.recordId = created.id; });
    const Record record{*lock.id, created.id};
    if (!co_await askFirst(record)) co_return;
    co_await background();
    backUp(record);
}

Task<bool> BackupRun::askFirst(const Record&) {
    co_return true;
}

Detached BackupRun::complete(Record record, Counts counts, NetworkFailure outcome) {
    const auto self = shared_from_this();
    const RecordCounts told{counts.succCount, counts.succCount, counts.failCount, outcome.code};
    const auto end =
        co_await steps().closeRecord(record.lockId, record.recordId.value_or(""), told, outcome.message);
    completeOnce(counts, {end.code, end.message});
    CloudInstance::shared().getBackupImpl().deleteBackupLock(record.lockId, [](const auto&) {});
}

/// The end of a run that has a lock and no record.
void BackupRun::giveUp(const std::string& lockId, Counts counts, const NetworkFailure& outcome) {
    completeOnce(counts, outcome);
    CloudInstance::shared().getBackupImpl().deleteBackupLock(lockId, [](const auto&) {});
}

void BackupRun::cancel() {
    stateQueue_.write([&] { state_.hasCancel = state_.hasAllFileSubmit = true; });
    const auto operations = stateQueue_.read([&] { return state_.operationList; });
    for (const auto& queued : operations)
        if (const auto operation = queued.lock()) operation->cancel();
    check({steps().rememberedLock(), stateQueue_.read([&] { return state_.recordId; })});
}

// Uploads.

bool BackupRun::submit(const Record& record, const std::string& key, const std::string& folderId, URL file) {
    const auto operation = std::make_shared<UploadOperation>(
        folderId, std::move(file), "", 4, CloudInstance::shared().sliceFile.get(),
        [self = shared_from_this(), record, key](const UploadProcessResult& event) {
            self->onUpload(record, key, event);
        });
    const bool cancelled = stateQueue_.write([&] {
        if (state_.hasCancel) return true;
        state_.operationList.push_back(operation);
        state_.resultList.add(key);
        return false;
    });
    if (cancelled) {
        complete(record, counts(), userCancel());
        return false;
    }
    BackupThreadPoolUtil::queue().addOperation(operation);
    return true;
}

void BackupRun::submitted(const Record& record) {
    stateQueue_.write([&] { state_.hasAllFileSubmit = true; });
    check(record);
}

void BackupRun::onUpload(const Record& record, const std::string& key, const UploadProcessResult& event) {
    // After a cancel each event closes the record again, and the host hears of the first alone.
    if (endedByCancel(record)) return;
    using Event = UploadProcessResult;
    event.visit(
        [&](const Event::onProgress& it) {
            logLine(name(), " onProgress bytes = ", it.bytes, ", total = ", it.total);
        },
        [&](const Event::onFileCreate& it) {
            logLine(name(), " onFileCreate _resoponse = ", it.response.fileId.value_or("nil"));
        },
        [&](const Event::onItemFinish& it) { logLine(name(), " onItemFinish subHash = ", it.subHash); },
        [&](const Event::onSuccess& it) {
            logLine(name(), " onSuccess code = ", it.code, ", msg=", it.msg);
            onUploadEnd(record, key, it.code, it.msg);
        },
        [&](const Event::onFailure& it) {
            logLine(name(), " onFailure errCode = ", it.errCode, ", errMsg=", it.errMsg);
            onUploadEnd(record, key, it.errCode, it.errMsg);
        });
}

void BackupRun::onUploadEnd(const Record& record, const std::string& key, std::int64_t code,
                            const std::string& msg) {
    stateQueue_.write([&] { state_.resultList.finish(key, code, msg); });
    check(record);
}

/// Looks whether the run is over.
void BackupRun::check(const Record& record) {
    struct View {
        bool cancelled, over;
        Counts counts;
        std::int64_t failed;
    };
    const auto view = stateQueue_.read([&] {
        const auto& results = state_.resultList;
        return View{state_.hasCancel,
                    results.allFinished() && state_.hasAllFileSubmit,
                    {results.succeeded(), state_.total - results.succeeded()},
                    results.failed()};
    });
    if (view.cancelled) {
        if (record.recordId)
            complete(record, view.counts, userCancel());
        else
            giveUp(record.lockId, view.counts, userCancel());
    } else if (view.over) {
        complete(record, view.counts, {Constants::BACKUP_SUCCESS, "success"});
    } else {
        tell({BackupResult::onProgress{view.counts.succCount, view.failed}});
    }
}

// State, and what the host hears.

bool BackupRun::hasCancel() const {
    return stateQueue_.read([&] { return state_.hasCancel; });
}

bool BackupRun::endedByCancel(const Record& record) {
    if (!hasCancel()) return false;
    complete(record, counts(), userCancel());
    return true;
}

void BackupRun::setTotal(std::int64_t total) {
    stateQueue_.write([&] { state_.total = total; });
}

BackupRun::Counts BackupRun::counts() const {
    return stateQueue_.read([&] {
        const auto succeeded = state_.resultList.succeeded();
        return Counts{succeeded, state_.total - succeeded};
    });
}

void BackupRun::completeOnce(Counts counts, const NetworkFailure& outcome) {
    const bool told = stateQueue_.write([&] { return std::exchange(state_.hasCallComplete, true); });
    if (!told)
        tell({BackupResult::onComplete{counts.succCount, counts.failCount, outcome.code, outcome.message}});
}

void BackupRun::tell(BackupResult event) const {
    invokeCallback(onCallback, std::move(event));
}

NetworkFailure BackupRun::userCancel() {
    return {Constants::BACKUP_USER_CANCEL, "User cancel"};
}

}  // namespace baseapi::inline v1
