#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "baseapi/backup/backup_run.h"
#include "baseapi/backup/file_detail_bean.h"

namespace baseapi::inline v1 {

/// Backs up the folders that the service lists as the device's scopes: mirrors them as cloud folders and
/// uploads every file.
class DirsUploadManager final : public BackupRun {
  public:
    DirsUploadManager();

  protected:
    Task<bool> askFirst(const Record& record) override;
    void backUp(const Record& record) override;

  private:
    bool walk(const Record& record);
    void makeFolders();
    void makeFolder(const FileDetailBean& folder);
    bool submitFiles(const Record& record);

    std::vector<ScopeDetail> scopes_;
    std::deque<FileDetailBean> filesList_;
    std::deque<FileDetailBean> folderBeans_;
    /// Cloud folder ids by cloud path.
    std::map<std::string, std::string, std::less<>> foldersList_;
};

}  // namespace baseapi::inline v1
