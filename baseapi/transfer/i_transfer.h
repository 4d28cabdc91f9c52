#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/core/cancelable.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/core/url.h"
#include "baseapi/transfer/download_result.h"
#include "baseapi/transfer/upload_process_result.h"

namespace baseapi::inline v1 {

/// Moves the content of files. What an operation returns keeps itself alive until it has ended: a caller that
/// never wants to cancel may drop it at once.
class ITransfer {
  public:
    virtual ~ITransfer() = default;

    /// Fetches `url` into the file `localPath`; an existing file is replaced, and a missing folder is made.
    /// Returns at once. Whatever the address answers is saved, an error page too. `fileId` is not used.
    ///
    /// `completion` is called once, also after a cancel. The temporary file lies in the platform's temporary
    /// folder, where its owner alone can reach it.
    virtual std::shared_ptr<Cancelable> downloadFile(const URL& url, const std::string& fileId,
                                                     const URL& localPath, DownloadProgress progress,
                                                     DownloadCompletion completion) = 0;

    /// Uploads `file` into the folder `cloudPath`, which is a folder's id; the root folder where it is
    /// absent.
    ///
    /// The calling thread hashes the file through `sliceFile` and sends the request that creates it, so this
    /// may take as long as reading the file takes, and a failure may be delivered before it returns.
    /// `contentId` of `CloudInstance` is read now. Every upload is a new file that the service renames where
    /// its name is taken: `fileId` and `autoRename` are accepted and dropped.
    ///
    /// `onCallback` gets `onSuccess` or `onFailure` once and last. Every failure, a cancel too, is
    /// `onFailure(100016, "file invaild")`; the cause stands in the log lines. A cancel while no part of the
    /// file is on the wire and others wait gives no last event at all.
    virtual std::shared_ptr<Cancelable> uploadFile(std::optional<std::string> cloudPath, URL file,
                                                   const std::string& fileId, std::int64_t autoRename,
                                                   std::shared_ptr<ISliceFile> sliceFile,
                                                   UploadProcessCallback onCallback) = 0;

    /// Uploads `file` into the backup record `recordId` under the lock `lockId`, into the folder `cloudPath`;
    /// otherwise as `uploadFile`, with the code 100001 in place of 100016.
    virtual std::shared_ptr<Cancelable> backupUploadFile(std::string cloudPath, URL file,
                                                         const std::string& fileId, std::string recordId,
                                                         std::string lockId, std::int64_t autoRename,
                                                         std::shared_ptr<ISliceFile> sliceFile,
                                                         UploadProcessCallback onCallback) = 0;
};

}  // namespace baseapi::inline v1
