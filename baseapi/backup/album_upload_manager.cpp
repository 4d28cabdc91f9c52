#include "baseapi/backup/album_upload_manager.h"

#include <string>
#include <utility>

#include "baseapi/backup/album_helper.h"
#include "baseapi/backup/cloud_path_helper.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

AlbumUploadManager::AlbumUploadManager()
    : BackupRun({
          .module = {"AlbumUploadManager", "101", "backup_lock_id_101"},
          .stateLabel = "com.albumuploadmanager.state",
          .noPermission = {Constants::BACKUP_NO_ALBUM_PERMISSION, "no album permission"},
          .beforeRecord =
              "===============AlbumUploadManager createBackupRecord start ==========================",
          .refusedRecord = "createBackupRecord failure",
      }) {}

void AlbumUploadManager::backUp(const Record& record) {
    const auto [photos, videos] = AlbumHelper::fetchAllMediaAssets();
    const auto fileCount = static_cast<std::int64_t>(photos.size() + videos.size());
    setTotal(fileCount);
    logLine("======getAndUploadBackupList count ", fileCount, "======");
    const auto imagesId = fetchCloudPath("/Images").id;
    const auto videosId = fetchCloudPath("/Videos").id;
    if (imagesId.empty() && videosId.empty()) {
        complete(record, {0, fileCount}, {Constants::BACKUP_CREATE_CLOUD_PATH_ERROR, "Create path error"});
        return;
    }
    for (const auto& asset : photos)
        if (!submitAsset(record, asset, imagesId)) return;
    for (const auto& asset : videos)
        if (!submitAsset(record, asset, videosId)) return;
    submitted(record);
}

/// False where the run was cancelled. An asset without a folder is left out, and counts as failed.
bool AlbumUploadManager::submitAsset(const Record& record, const PhotoAsset& asset,
                                     const std::string& folderId) {
    if (endedByCancel(record)) return false;
    if (folderId.empty()) return true;
    auto info = AlbumHelper::getBackupFileInfo(asset);
    if (!info.url) fatalStop("AlbumUploadManager: no file for the asset " + asset.localIdentifier);
    return submit(record, asset.localIdentifier, folderId, std::move(*info.url));
}

}  // namespace baseapi::inline v1
