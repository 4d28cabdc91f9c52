#include "baseapi/backup/contact_recover_task.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/api/files/i_file.h"
#include "baseapi/backup/album_helper.h"
#include "baseapi/contacts/vcf_import_manager.h"
#include "baseapi/contacts/vcf_manager.h"
#include "baseapi/core/background.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"
#include "baseapi/net/url_check.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/i_transfer.h"

namespace baseapi::inline v1 {
namespace {

namespace fs = std::filesystem;

bool isBelow(const fs::path& folder, const fs::path& path) {
    const auto way = path.lexically_normal().lexically_relative(folder.lexically_normal());
    return !way.empty() && way != "." && *way.begin() != "..";
}

/// Where a file of this name goes. The name is the service's word, and must not lead out of the temporary
/// folder.
fs::path temporaryFile(std::string name) {
    const auto& folder = platform().temporaryFolder;
    name.resize(std::min(name.find('\0'), name.size()));
    fs::path asTold = folder.native() + "/" + name;
    if (!name.ends_with('/') && isBelow(folder, asTold)) return asTold;
    const auto last = fs::path(name).filename();
    if (!last.empty() && last != "." && last != "..") return folder / last;
    return folder / ("contact_" + VCFManager::getCurrentTimestamp() + ".vcf");
}

}  // namespace

void ContactRecoverTask::startRecover() {
    if (!AlbumHelper::hasContactsPermission()) {
        logLine("ContactRecoverTask no contact permission");
        return fail(Constants::BACKUP_NO_CONTACT_PERMISSION, "No contact permission");
    }
    if (recordId.empty()) {
        logLine("ContactRecoverTask no recordId");
        return fail(Constants::BACKUP_PARAMS_INVALID, "No record id");
    }
    run();
}

// The run, in the order of its calls to the service.

Detached ContactRecoverTask::run() {
    const auto self = shared_from_this();
    co_await background();
    const auto fileId = co_await findFile();
    if (!fileId) co_return;
    const auto detail = co_await fileDetail(*fileId);
    if (!detail) co_return;
    const auto link = contentLink(*detail);
    if (!link) co_return;
    if (!isURL(*link)) {
        fail(Constants::BACKUP_FILE_DOWNLOAD_FAILURE, "Contact download file failed");
        co_return;
    }
    const auto target = URL::file(temporaryFile(detail->fileName.value_or("")));
    const auto end = co_await callbackOf<DownloadResult>([&](auto callback) {
        CloudInstance::shared().getTransferImpl().downloadFile(
            URL(*link), detail->id.value_or(""), target, [self](double value) { self->tellProgress(value); },
            std::move(callback));
    });
    end.visit(
        [&](const DownloadResult::failure&) {
            fail(Constants::BACKUP_FILE_DOWNLOAD_FAILURE, "Contact download file failed");
        },
        [&](const DownloadResult::success& it) { importContacts(it.file); });
}

/// The id of the record's first file; nothing where the run has failed.
Task<std::optional<std::string>> ContactRecoverTask::findFile() {
    GetRecordFilesBean bean;
    bean.recordId = recordId;
    bean.pageSize = 100;
    bean.cursor = "";
    const auto answer = co_await callbackOf<NetworkResult<GetRecordFilesResponse>>([&](auto callback) {
        CloudInstance::shared().getBackupImpl().getRecordFiles(bean, std::move(callback));
    });
    if (const auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
        logLine("ContactRecoverTask getRecordFile failed");
        fail(failure->code, failure->message);
        co_return std::nullopt;
    }
    const auto& response = std::get<0>(answer.value).record;
    if (response.code != 0 || !response.data || response.data->empty()) {
        fail(Constants::BACKUP_FILE_RECORD_FAILURE, "Contact record failed");
        co_return std::nullopt;
    }
    const auto& fileId = response.data->front().fileId;
    if (!fileId || fileId->empty()) {
        fail(Constants::BACKUP_FILE_RECORD_FAILURE, "Contact recode no file id");
        co_return std::nullopt;
    }
    co_return fileId;
}

/// Nothing where the run has failed.
Task<std::optional<GetFileDetailResponse>> ContactRecoverTask::fileDetail(std::string fileId) {
    GetFileDetailBean bean;
    bean.fileId = std::move(fileId);
    bean.containerId = CloudInstance::shared().contentId.get();
    const auto answer = co_await callbackOf<NetworkResult<GetFileDetailResponse>>([&](auto callback) {
        CloudInstance::shared().getFileImpl().getFileDetail(bean, std::move(callback));
    });
    if (const auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
        fail(failure->code, failure->message);
        co_return std::nullopt;
    }
    const auto& response = std::get<0>(answer.value).record;
    if (response.code != 0) {
        fail(response.code.value_or(Constants::BACKUP_FILE_DETAIL_FAILURE),
             response.msg.value_or("Contact get file failed"));
        co_return std::nullopt;
    }
    co_return response;
}

/// Nothing where the run has failed.
std::optional<std::string> ContactRecoverTask::contentLink(const GetFileDetailResponse& detail) {
    if (detail.downloadLinks) {
        const auto& links = *detail.downloadLinks;
        const auto content =
            std::ranges::find(links, "content", [](const auto& it) { return it.usage.value_or(""); });
        if (content != links.end() && content->downloadLink && !content->downloadLink->empty())
            return content->downloadLink;
    }
    fail(Constants::BACKUP_FILE_DETAIL_FAILURE, "Contact get file no download url");
    return std::nullopt;
}

/// On the thread of the download's end, until the address book is written.
void ContactRecoverTask::importContacts(const URL& file) {
    if (VCFImportManager::importContactsFromVCF(file) < 0)
        return fail(Constants::BACKUP_CONTACT_IMPORT_FAILURE, "Contact import failed");
    tell({ContactResult::onSuccess{hash, 0, "success"}});
}

void ContactRecoverTask::tellProgress(double value) const {
    if (!std::isfinite(value) || std::abs(value) > 1e15) return;
    tell({ContactResult::onProgress{hash, static_cast<std::int64_t>(value)}});
}

void ContactRecoverTask::fail(std::int64_t code, std::string message) const {
    tell({ContactResult::onFailure{hash, code, std::move(message)}});
}

void ContactRecoverTask::tell(ContactResult event) const {
    invokeCallback(onCallback, std::move(event));
}

}  // namespace baseapi::inline v1
