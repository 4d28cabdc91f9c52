#include "baseapi/backup/dirs_upload_manager.h"

#include <algorithm>
#include <utility>

#include "baseapi/backup/cloud_folder.h"
#include "baseapi/backup/cloud_path_helper.h"
#include "baseapi/backup/directory_traverser.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"

namespace baseapi::inline v1 {

DirsUploadManager::DirsUploadManager()
    : BackupRun({
          .module = {"DirsUploadManager", "100", "backup_lock_id_100"},
          .stateLabel = "com.dirsuploadmanager.state",
          .noPermission = {Constants::BACKUP_NO_FILE_PERMISSION, "No file permission"},
          // The log says "success" of a refusal.
          .refusedRecord = "createBackupRecord success",
      }) {}

Task<bool> DirsUploadManager::askFirst(const Record& record) {
    BaseScopeBean bean;
    bean.deviceId = deviceId.value_or(0);
    bean.moduleCode = "100";
    auto answer = co_await callbackOf<NetworkResult<GetScopeResponse>>(
        [&](auto callback) { CloudInstance::shared().getBackupImpl().getScope(bean, std::move(callback)); });
    NetworkFailure refusal;
    if (auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
        refusal = *failure;
    } else {
        auto& response = std::get<0>(answer.value).record;
        if (response.code == 0) {
            scopes_ = std::move(response.scopeList);
            co_return true;
        }
        refusal = {response.code.value_or(Constants::BACKUP_SCOPE_RESP_NULL),
                   response.msg.value_or("scope switch error")};
    }
    logLine(name(), " getBackupScope failure code = ", refusal.code, ", msg = ", refusal.message);
    complete(record, {}, refusal);
    co_return false;
}

void DirsUploadManager::backUp(const Record& record) {
    if (!walk(record)) return;
    makeFolders();
    if (submitFiles(record)) submitted(record);
}

/// False where the run was cancelled.
bool DirsUploadManager::walk(const Record& record) {
    for (const auto& scope : scopes_) {
        if (hasCancel()) {
            complete(record, {}, userCancel());
            return false;
        }
        if (!scope.localPath || !scope.targetFolderPath) continue;
        DirectoryTraverser::generateFileDetailBeans(
            *scope.localPath, *scope.targetFolderPath, [&](FileDetailBean&& bean) {
                (bean.isDirectory ? folderBeans_ : filesList_).push_back(std::move(bean));
            });
    }
    setTotal(static_cast<std::int64_t>(filesList_.size()));
    return true;
}

/// A folder that cannot be made does not stop the run: its files find no folder, and count as failed.
void DirsUploadManager::makeFolders() {
    // A folder comes before the folders inside it.
    std::ranges::stable_sort(folderBeans_, {},
                             [](const auto& bean) -> const std::string& { return *bean.cloudPath; });
    for (const auto& folder : std::exchange(folderBeans_, {})) makeFolder(folder);
}

void DirsUploadManager::makeFolder(const FileDetailBean& folder) {
    const auto& cloudPath = *folder.cloudPath;
    logLine("new folder cloudPath = ", cloudPath, ", name = ", folder.fileName());
    auto parent = foldersList_.find(cloudPath);
    if (parent == foldersList_.end()) {
        auto id = fetchCloudPath(cloudPath).id;
        if (id.empty()) return;
        parent = foldersList_.emplace(cloudPath, std::move(id)).first;
    }
    auto id = createSingleFolderSync(std::string(folder.fileName()), parent->second);
    // Not a path as the files of the folder have it: a slash at the end of the target stays doubled here.
    if (!id.empty()) foldersList_[cloudPath + "/" + std::string(folder.fileName())] = std::move(id);
}

/// False where the run was cancelled.
bool DirsUploadManager::submitFiles(const Record& record) {
    for (; !filesList_.empty(); filesList_.pop_front()) {
        if (endedByCancel(record)) return false;
        auto& file = filesList_.front();
        const auto folder = foldersList_.find(*file.cloudPath);
        if (folder == foldersList_.end()) continue;
        if (!submit(record, file.filePath, folder->second, URL::file(file.filePath))) return false;
    }
    return true;
}

}  // namespace baseapi::inline v1
