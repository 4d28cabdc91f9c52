#pragma once

#include <optional>
#include <string>

#include "baseapi/transfer/upload_process.h"

namespace baseapi::inline v1 {

/// What happens in an upload into a backup record: the same as in any upload.
using BackupUploadProcessResult = UploadProcessResult;

/// The upload of one file into a backup record, under the lock of the backup; its failures carry the code
/// 100001.
class BackupUploadProcessTask final : public UploadProcess {
  public:
    BackupUploadProcessTask();

    /// The record that takes the file; without one the file is not created.
    std::optional<std::string> recordId;
    /// An absent one is a programming error and ends the process when the file is to be created.
    std::optional<std::string> lockId;

  private:
    void requestCreation(FilesCreateBean bean, NetworkCallback<FilesCreateResponse> onCreated) override;
};

}  // namespace baseapi::inline v1
