#include "baseapi/backup/contact_backup_task.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include "baseapi/backup/album_helper.h"
#include "baseapi/backup/cloud_path_helper.h"
#include "baseapi/contacts/contact_manager.h"
#include "baseapi/contacts/vcard_generator.h"
#include "baseapi/contacts/vcf_manager.h"
#include "baseapi/core/background.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"
#include "baseapi/json/codec.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/i_transfer.h"

namespace baseapi::inline v1 {
namespace {

constexpr BackupModule contacts{"ContactBackupTask", "102", "backup_lock_id_102"};
constexpr const char* cloudPath = "/quillbox_backup/102";

NetworkFailure userCancel() {
    return {Constants::BACKUP_USER_CANCEL, "User cancel"};
}

BackupContactResult asResult(const NetworkFailure& failure) {
    return {BackupContactResult::failure{failure.code, failure.message}};
}

std::int64_t sizeOf(const URL& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file.path(), error);
    return error ? 0 : static_cast<std::int64_t>(size);
}

Detached releaseAndLog(std::string lockId) {
    logLine("ContactBackupTask deleteBackupLock lockId = ", lockId);
    if (lockId.empty()) co_return;
    const auto answer = co_await callbackOf<NetworkResult<BaseResponse>>([&](auto callback) {
        CloudInstance::shared().getBackupImpl().deleteBackupLock(lockId, std::move(callback));
    });
    if (const auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
        logLine("deleteBackupLock failure code = ", failure->code, ", msg = ", failure->message);
        co_return;
    }
    const auto text = encode(std::get<0>(answer.value).record);
    if (text)
        logLine("deleteBackupLock success resp = ", *text);
    else
        logLine("deleteBackupLock success but change json error");
}

}  // namespace

void ContactBackupTask::start() {
    if (!AlbumHelper::hasContactsPermission())
        return deliverResult(
            {BackupContactResult::failure{Constants::BACKUP_NO_CONTACT_PERMISSION, "No permission"}});
    run();
}

void ContactBackupTask::setCancelled(bool cancelled) {
    if (cancelled) stateQueue_.write([&] { hasCancel_ = true; });
}

// The run, in the order of its calls to the service.

Detached ContactBackupTask::run() {
    const auto self = shared_from_this();
    const auto service = steps();
    co_await background();
    auto staleLock = service.rememberedLock();
    if (hasCancel()) {
        deliverResult(asResult(userCancel()));
        co_return;
    }
    co_await service.releaseLock(std::move(staleLock));

    const auto answer = co_await service.takeLock();
    if (hasCancel()) {
        service.rememberLock(answer);
        deliverResult(asResult(userCancel()));
        co_return;
    }
    const auto lock = service.lockOutcome(answer);
    if (!lock.id) {
        if (lock.answered)
            executeResult(lock.failure, "");
        else
            deliverResult(asResult(lock.failure));
        co_return;
    }
    co_await service.pruneRecords(*lock.id);
    if (hasCancel()) {
        executeResult(userCancel(), *lock.id);
        co_return;
    }

    const auto created = co_await service.createRecord(*lock.id);
    if (!created.id) {
        executeResult(created.failure, *lock.id);
        // The log says "success" of a refusal too.
        if (created.answered) service.logRefusal("createBackupRecord success", created.failure);
        co_return;
    }
    Upload told{*lock.id, *created.id, 0, 0};
    if (hasCancel()) {
        completeRecord(told, 0, userCancel());
        co_return;
    }

    auto book = ContactManager::shared().fetchAllContacts();
    told.contactCount = static_cast<std::int64_t>(book.size());
    const auto written = co_await callbackOf<VcfFileResult>([&](auto callback) {
        VCardGenerator::generateVcfFile(std::move(book),
                                        "backup_contact_" + VCFManager::getCurrentTimestamp() + ".vcf",
                                        std::move(callback));
    });
    const auto* file = std::get_if<VcfFileResult::success>(&written.value);
    if (file == nullptr) {
        completeRecord(told, told.contactCount,
                       {Constants::BACKUP_GENERATOR_CONTACT_FAILED, "Generate vcf failed"});
        co_return;
    }
    told.size = sizeOf(file->file);

    co_await background();
    const auto folderId = fetchCloudPath(cloudPath).id;
    if (hasCancel()) {
        completeRecord(told, 0, userCancel());
        co_return;
    }
    if (folderId.empty()) {
        completeRecord(told, told.contactCount,
                       {Constants::BACKUP_FOLDER_CREATE_ERROR, "folders create error"});
        co_return;
    }
    upload(told, folderId, file->file);
}

void ContactBackupTask::upload(const Upload& told, const std::string& folderId, const URL& file) {
    CloudInstance::shared().getTransferImpl().backupUploadFile(
        folderId, file, "", told.recordId, told.lockId, 2, CloudInstance::shared().sliceFile.get(),
        [self = shared_from_this(), told](const UploadProcessResult& event) { self->onUpload(told, event); });
}

void ContactBackupTask::onUpload(const Upload& told, const UploadProcessResult& event) {
    // After a cancel each event closes the record again; a second close does no harm.
    if (hasCancel()) {
        completeRecord(told, 0, userCancel());
        return;
    }
    using Event = UploadProcessResult;
    event.visit(
        [&](const Event::onProgress& it) { tellProgress(it.bytes, it.total > 0 ? it.total : told.size); },
        [&](const Event::onSuccess& it) {
            completeRecord(told, told.contactCount, {it.code, it.msg});
        },
        [&](const Event::onFailure& it) {
            logLine("BackupUploadProcessTask sub onFailure ", it.errCode, " + ", it.errMsg);
            completeRecord(told, told.contactCount, {it.errCode, it.errMsg});
        },
        [](const Event::onFileCreate&) {},
        [&](const Event::onItemFinish&) {
            CloudInstance::shared().getBackupImpl().keepBackupLock(
                told.lockId, [](const auto&) { logLine("keepLock result"); });
        });
}

/// The total of an upload is not known to the upload itself; an empty file has all of its bytes.
void ContactBackupTask::tellProgress(std::int64_t bytes, std::int64_t total) const {
    const double percent =
        total > 0 ? std::min(static_cast<double>(bytes) / static_cast<double>(total) * 100, 100.0) : 100.0;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%.2f", percent);
    logLine("BackupUploadProcessTask progress: ", bytes, " / ", total, " (", text.data(), "%)");
    invokeCallback(onCallback.onProgress, BackupProgress{"", static_cast<std::int64_t>(percent)});
}

// The ends.

Detached ContactBackupTask::completeRecord(Upload told, std::int64_t count, NetworkFailure outcome) {
    const auto self = shared_from_this();
    // The count stands for a success also where the run has failed.
    const RecordCounts counts{count, count, 0, outcome.code};
    const auto end = co_await steps().closeRecord(told.lockId, told.recordId, counts, outcome.message);
    deliverResult(end.succeeded ? BackupContactResult{BackupContactResult::success{0, end.message}}
                                : asResult({end.code, end.message}));
    CloudInstance::shared().getBackupImpl().deleteBackupLock(told.lockId, [](const auto&) {});
}

void ContactBackupTask::executeResult(const NetworkFailure& failure, const std::string& lockId) {
    logLine("ContactBackupTask contact backup executeResult errCode = ", failure.code,
            ", errMsg = ", failure.message);
    deliverResult(asResult(failure));
    releaseAndLog(lockId);
}

void ContactBackupTask::deliverResult(BackupContactResult result) const {
    invokeCallback(onCallback.onComplete, std::move(result));
}

bool ContactBackupTask::hasCancel() const {
    return stateQueue_.read([&] { return hasCancel_; });
}

RecordSteps ContactBackupTask::steps() const {
    return {contacts, deviceId};
}

}  // namespace baseapi::inline v1
