#include "baseapi/backup/record_steps.h"

#include <utility>

#include "baseapi/backup/delete_record_task.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"
#include "baseapi/core/preferences.h"
#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<RecordCounts>();

namespace {

IBackUp& service() {
    return CloudInstance::shared().getBackupImpl();
}

std::string codeText(const std::optional<std::int64_t>& code) {
    return code ? std::to_string(*code) : "nil";
}

}  // namespace

std::string RecordSteps::rememberedLock() const {
    return Preferences::shared().getString(module_.lockKey, "");
}

Task<void> RecordSteps::releaseLock(std::string lockId) const {
    co_await callbackOf<NetworkResult<BaseResponse>>(
        [&](auto callback) { service().deleteBackupLock(lockId, std::move(callback)); });
}

Task<NetworkResult<CreateBackupLockResponse>> RecordSteps::takeLock() const {
    CreateLockBean bean;
    bean.moduleCode = module_.moduleCode;
    co_return co_await callbackOf<NetworkResult<CreateBackupLockResponse>>(
        [&](auto callback) { service().createBackupLock(bean, std::move(callback)); });
}

void RecordSteps::rememberLock(const NetworkResult<CreateBackupLockResponse>& answer) const {
    const auto* success = std::get_if<0>(&answer.value);
    if (success == nullptr || success->record.code != 0 || !success->record.data) return;
    if (const auto& lockId = success->record.data->lockId)
        Preferences::shared().putString(module_.lockKey, lockId);
}

RecordSteps::Outcome RecordSteps::lockOutcome(const NetworkResult<CreateBackupLockResponse>& answer) const {
    if (const auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
        logLine(module_.logName, " createBackupLock failure code = ", failure->code,
                ", msg = ", failure->message);
        return {std::nullopt, *failure, false};
    }
    const auto& response = std::get<0>(answer.value).record;
    const auto msg = response.msg.value_or("nil");
    if (response.code != 0 || !response.data) {
        logLine(module_.logName, " createBackupLock failure code = ", codeText(response.code),
                ", msg = ", msg);
        return {std::nullopt,
                {response.code.value_or(Constants::BACKUP_LOCK_ID_RESP_NULL),
                 response.msg.value_or("Lock id error")},
                true};
    }
    if (!response.data->lockId) {
        logLine(module_.logName, " createBackupLock failure code = ", codeText(response.code),
                ", msg = get lock id error, ", msg);
        return {
            std::nullopt, {Constants::BACKUP_LOCK_ID_EMPTY, response.msg.value_or("Lock id empty")}, true};
    }
    const auto& lockId = *response.data->lockId;
    rememberLock(answer);
    logLine(module_.logName, " createBackupLock success lockId = ", lockId);
    return {lockId, {}, true};
}

Task<void> RecordSteps::pruneRecords(std::string lockId) const {
    co_await callbackOf<DeleteRecordResult>([&](auto callback) {
        std::make_shared<DeleteRecordTask>(lockId, deviceId_, std::string(module_.moduleCode),
                                           std::move(callback))
            ->submit();
    });
}

Task<RecordSteps::Outcome> RecordSteps::createRecord(std::string lockId) const {
    CreateRecordBean bean;
    bean.moduleCode = module_.moduleCode;
    bean.deviceId = deviceId_;
    const auto answer = co_await callbackOf<NetworkResult<RecordDetailResponse>>(
        [&](auto callback) { service().createRecord(bean, lockId, std::move(callback)); });
    if (const auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
        logRefusal("createBackupRecord failure", *failure);
        co_return Outcome{std::nullopt, *failure, false};
    }
    const auto& response = std::get<0>(answer.value).record;
    if (response.code == 0 && response.data && response.data->recordId)
        co_return Outcome{response.data->recordId, {}, true};
    co_return Outcome{std::nullopt,
                      {response.code.value_or(Constants::BACKUP_CREATE_RECORD_RESP_NULL),
                       response.msg.value_or("Create record error")},
                      true};
}

Task<RecordSteps::Ending> RecordSteps::closeRecord(std::string lockId, std::string recordId,
                                                   RecordCounts counts, std::string message) const {
    CompleteRecordBean bean;
    bean.recordId = std::move(recordId);
    bean.properties = encode(counts);
    const auto answer = co_await callbackOf<NetworkResult<BaseResponse>>(
        [&](auto callback) { service().backupComplete(bean, lockId, std::move(callback)); });
    if (counts.errorCode != 0) co_return Ending{counts.errorCode, std::move(message)};
    if (const auto* failure = std::get_if<NetworkFailure>(&answer.value))
        co_return Ending{failure->code, failure->message};
    const auto& response = std::get<0>(answer.value).record;
    const auto code = response.code.value_or(Constants::BACKUP_COMPLETE_FAILED);
    co_return Ending{code, response.msg.value_or("Complete failed"), code == 0};
}

void RecordSteps::logRefusal(std::string_view step, const NetworkFailure& failure) const {
    logLine(module_.logName, " ", step, " code = ", failure.code, ", msg = ", failure.message);
}

}  // namespace baseapi::inline v1
