#pragma once

#include "baseapi/transfer/i_transfer.h"

namespace baseapi::inline v1 {

class TransferImpl final : public ITransfer {
  public:
    std::shared_ptr<Cancelable> downloadFile(const URL& url, const std::string& fileId, const URL& localPath,
                                             DownloadProgress progress,
                                             DownloadCompletion completion) override;
    std::shared_ptr<Cancelable> uploadFile(std::optional<std::string> cloudPath, URL file,
                                           const std::string& fileId, std::int64_t autoRename,
                                           std::shared_ptr<ISliceFile> sliceFile,
                                           UploadProcessCallback onCallback) override;
    std::shared_ptr<Cancelable> backupUploadFile(std::string cloudPath, URL file, const std::string& fileId,
                                                 std::string recordId, std::string lockId,
                                                 std::int64_t autoRename,
                                                 std::shared_ptr<ISliceFile> sliceFile,
                                                 UploadProcessCallback onCallback) override;
};

}  // namespace baseapi::inline v1
