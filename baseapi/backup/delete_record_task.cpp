#include "baseapi/backup/delete_record_task.h"

#include <algorithm>
#include <utility>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/log.h"
#include "baseapi/core/time_stamp.h"
#include "baseapi/json/codec.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {
namespace {

constexpr std::int64_t finished = 1;

using Success = DeleteRecordResult::onSuccess;
using Failure = DeleteRecordResult::onFailure;

/// By `createTime` as a text; a record without one keeps its place.
void sortNewestFirst(std::vector<RecordDetailBean>& records) {
    std::vector<std::size_t> places;
    std::vector<RecordDetailBean> dated;
    for (std::size_t place = 0; place < records.size(); ++place) {
        if (!records[place].createTime) continue;
        places.push_back(place);
        dated.push_back(std::move(records[place]));
    }
    std::ranges::stable_sort(dated, std::greater{}, &RecordDetailBean::createTime);
    for (std::size_t i = 0; i < places.size(); ++i) records[places[i]] = std::move(dated[i]);
}

/// The ids of all records but the newest finished one.
std::vector<std::string> outdated(std::vector<RecordDetailBean> records) {
    sortNewestFirst(records);
    const auto kept = std::ranges::find(records, finished, &RecordDetailBean::status);
    std::vector<std::string> ids;
    for (auto record = records.begin(); record != records.end(); ++record)
        if (record != kept && record->recordId) ids.push_back(*std::move(record->recordId));
    return ids;
}

}  // namespace

DeleteRecordTask::DeleteRecordTask(std::optional<std::string> lockId, std::optional<std::int64_t> deviceId,
                                   std::optional<std::string> moduleCode, DeleteRecordCallback onCallback)
    : lockId_(std::move(lockId)),
      deviceId_(deviceId),
      moduleCode_(std::move(moduleCode)),
      onCallback_(std::move(onCallback)),
      timeStamp_(secondsSince1970()) {}

void DeleteRecordTask::submit() {
    CloudInstance::shared().getBackupImpl().getRecords(
        GetRecordBean{.moduleCode = moduleCode_, .pageSize = 100, .deviceId = deviceId_},
        [self = shared_from_this()](NetworkResult<GetRecordsResponse> answer) {
            answer.visit(
                [&](NetworkResult<GetRecordsResponse>::success& it) {
                    self->onRecords(std::move(it.record));
                },
                [&](NetworkFailure& it) {
                    self->finish({Failure{it.code, it.message}});
                    logLine("getRecords failure code = ", it.code, ", msg = ", it.message);
                });
        });
}

void DeleteRecordTask::onRecords(GetRecordsResponse response) {
    const auto text = encode(response);
    if (!text) {
        logLine("getRecords success but change json error");
        return finish({Failure{-1, "change json error"}});
    }
    logLine("getRecords success resp = ", *text);
    if (!response.data) return finish({Failure{-1, "response.data is null"}});
    deleteAll(outdated(*std::move(response.data)));
}

void DeleteRecordTask::deleteAll(std::vector<std::string> recordIds) {
    if (recordIds.empty()) return finish({Success{0, "success"}});
    totalCount_ = recordIds.size();
    logLine("###############################backupDelete totalCount code = ", totalCount_);
    if (!lockId_) fatalStop("DeleteRecordTask: the lock id is absent");
    for (auto& recordId : recordIds) {
        CloudInstance::shared().getBackupImpl().backupDelete(
            BaseRecordBean{std::move(recordId)}, lockId_,
            [self = shared_from_this()](const NetworkResult<BaseResponse>& answer) {
                self->onDeleted(answer);
            });
    }
}

void DeleteRecordTask::onDeleted(const NetworkResult<BaseResponse>& answer) {
    logLine("###############################backupDelete call one");
    const bool deleted = answer.visit(
        [](const NetworkResult<BaseResponse>::success& it) {
            if (it.record.code == 0) return true;
            logLine("###############################backupDelete call error2");
            return false;
        },
        [](const NetworkFailure& it) {
            logLine("backupDelete failure code = ", it.code, ", msg = ", it.message);
            logLine("###############################backupDelete call error3");
            return false;
        });
    if (auto result = counted(deleted)) finish(*std::move(result));
}

std::optional<DeleteRecordResult> DeleteRecordTask::counted(bool deleted) {
    const std::lock_guard lock(mutex_);
    ++hasFinishCount_;
    if (!deleted) ++errCount_;
    if (hasFinishCount_ < totalCount_) return std::nullopt;
    if (errCount_ == 0) return DeleteRecordResult{Success{0, "success"}};
    return DeleteRecordResult{Failure{-1, "backupDelete part failure ,size = " + std::to_string(errCount_)}};
}

void DeleteRecordTask::finish(DeleteRecordResult result) const {
    invokeCallback(onCallback_, std::move(result));
    logLine("DeleteRecordTask release self ", timeStamp_);
}

}  // namespace baseapi::inline v1
