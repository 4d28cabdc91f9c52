#pragma once

#include "baseapi/backup/backup_run.h"
#include "baseapi/platform/photo_library.h"

namespace baseapi::inline v1 {

/// Backs up the whole photo library: the pictures into "/Images", the videos into "/Videos".
class AlbumUploadManager final : public BackupRun {
  public:
    AlbumUploadManager();

  protected:
    void backUp(const Record& record) override;

  private:
    bool submitAsset(const Record& record, const PhotoAsset& asset, const std::string& folderId);
};

}  // namespace baseapi::inline v1
