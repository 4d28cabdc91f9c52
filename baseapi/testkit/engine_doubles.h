#pragma once

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/testkit/interface_double.h"
#include "baseapi/transfer/i_transfer.h"

namespace baseapi::inline v1::testkit {

/// One file up, one file down; no byte is moved. A call without an answer ends as a failed transfer does.
class TransferDouble final : public InterfaceDouble<ITransfer> {
  public:
    std::shared_ptr<Cancelable> downloadFile(const URL& url, const std::string& fileId, const URL& localPath,
                                             DownloadProgress progress,
                                             DownloadCompletion completion) override {
        return moved<&ITransfer::downloadFile>("downloadFile", keep(std::tuple(url, fileId, localPath)),
                                               handlersIn(progress, completion));
    }
    std::shared_ptr<Cancelable> uploadFile(std::optional<std::string> cloudPath, URL file,
                                           const std::string& fileId, std::int64_t autoRename,
                                           std::shared_ptr<ISliceFile> sliceFile,
                                           UploadProcessCallback callback) override {
        return moved<&ITransfer::uploadFile>("uploadFile",
                                             keep(std::tuple(cloudPath, file, fileId, autoRename, sliceFile)),
                                             handlersIn(callback));
    }
    std::shared_ptr<Cancelable> backupUploadFile(std::string cloudPath, URL file, const std::string& fileId,
                                                 std::string recordId, std::string lockId,
                                                 std::int64_t autoRename,
                                                 std::shared_ptr<ISliceFile> sliceFile,
                                                 UploadProcessCallback callback) override {
        return moved<&ITransfer::backupUploadFile>(
            "backupUploadFile",
            keep(std::tuple(cloudPath, file, fileId, recordId, lockId, autoRename, sliceFile)),
            handlersIn(callback));
    }

  private:
    template <auto operation>
    std::shared_ptr<Cancelable> moved(std::string_view name, Kept arguments, std::vector<Handler> handlers) {
        const auto key = &operationKey<operation>;
        return given(called(key, name, std::move(arguments), std::move(handlers)), log(key)->handle());
    }
};

/// The runs that back up a phone. A run begins unless the test gives false for it.
class PhoneBackupDouble final : public InterfaceDouble<IPhoneBackup> {
  public:
    bool backupAlbum(const std::string& name, std::int64_t deviceId, BackupCallback callback) override {
        return given(called(&operationKey<&IPhoneBackup::backupAlbum>, "backupAlbum",
                            keep(std::tuple(name, deviceId)), handlersIn(callback)),
                     true);
    }
    bool backupDirs(const std::string& name, std::int64_t deviceId, BackupCallback callback) override {
        return given(called(&operationKey<&IPhoneBackup::backupDirs>, "backupDirs",
                            keep(std::tuple(name, deviceId)), handlersIn(callback)),
                     true);
    }
    bool backupContact(const std::string& name, std::int64_t deviceId, std::int64_t number,
                       BackupResultHandler handler) override {
        return given(called(&operationKey<&IPhoneBackup::backupContact>, "backupContact",
                            keep(std::tuple(name, deviceId, number)), handlersIn(handler)),
                     true);
    }
    void restoreContact(const std::string& hash, const std::string& recordId, std::int64_t number,
                        ContactCallback callback) override {
        called(&operationKey<&IPhoneBackup::restoreContact>, "restoreContact",
               keep(std::tuple(hash, recordId, number)), handlersIn(callback));
    }
    std::shared_ptr<Cancelable> getBackupManager(std::string_view moduleCode) override {
        const auto calls = log(&operationKey<&IPhoneBackup::getBackupManager>);
        const auto answer = calls->take(keep(std::string(moduleCode)));
        return given(answer ? answer->result : nullptr, calls->handle());
    }
};

/// What hashes files. A call without an answer gives nothing, as for a file that cannot be read.
class SliceFileDouble final : public InterfaceDouble<ISliceFile> {
  public:
    std::optional<std::string> calcSha256(const URL& of) override {
        return given(called(&operationKey<&ISliceFile::calcSha256>, "calcSha256", keep(of), {}),
                     std::optional<std::string>());
    }
};

}  // namespace baseapi::inline v1::testkit
