#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/api/backup/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// The store of phone backups: devices, their scopes and configuration, and the records of their modules
/// ("100" directories, "101" album, "102" contacts). Reached through
/// `CloudInstance::shared().getBackupImpl()`; callable from any thread. Requests, callbacks and refusals are
/// as `IFile` says. A record that has no JSON form is refused too, with a log line in most operations.
///
/// Whoever writes into a module's records takes the module's lock first (`createBackupLock`), passes its id
/// with each writing call and gives it back (`deleteBackupLock`). Where a lock id may be absent, the call
/// then goes out without it.
class IBackUp {
  public:
    virtual ~IBackUp() = default;

    // ---- devices

    /// Forgets a device.
    virtual void unbindDevice(std::int64_t deviceId, NetworkCallback<BaseResponse> oncallback) = 0;

    /// Makes a device known; the answer holds its id.
    virtual void bindDevice(std::optional<BaseDeviceBean> bean,
                            NetworkCallback<DeviceResponse> oncallback) = 0;

    /// The devices of the account.
    virtual void getDevices(NetworkCallback<DevicesResponse> onCallback) = 0;

    // ---- locks

    /// Takes the lock of a module.
    virtual void createBackupLock(std::optional<CreateLockBean> bean,
                                  NetworkCallback<CreateBackupLockResponse> oncallback) = 0;

    /// Renews a lock. An absent lock id is refused.
    virtual void keepBackupLock(std::optional<std::string> lockId,
                                NetworkCallback<BaseResponse> oncallback) = 0;

    /// Gives a lock back. An absent lock id is refused; an empty one is sent.
    virtual void deleteBackupLock(std::optional<std::string> lockId,
                                  NetworkCallback<BaseResponse> oncallback) = 0;

    // ---- records

    /// Closes a record with its result. `recordId` must be there; the lock id may be absent.
    virtual void backupComplete(std::optional<CompleteRecordBean> bean, std::optional<std::string> lockId,
                                NetworkCallback<BaseResponse> oncallback) = 0;

    /// Deletes a record. `recordId` must be there; the lock id may be absent.
    virtual void backupDelete(std::optional<BaseRecordBean> bean, std::optional<std::string> lockId,
                              NetworkCallback<BaseResponse> oncallback) = 0;

    /// All about one record. `recordId` must be there.
    virtual void backupGet(std::optional<BaseRecordBean> bean,
                           NetworkCallback<RecordDetailResponse> oncallback) = 0;

    /// Opens a record; the answer holds its id. An absent lock id is refused.
    virtual void createRecord(std::optional<CreateRecordBean> bean, std::optional<std::string> lockId,
                              NetworkCallback<RecordDetailResponse> oncallback) = 0;

    /// The records of a device and module, one page a call.
    virtual void getRecords(std::optional<GetRecordBean> bean,
                            NetworkCallback<GetRecordsResponse> oncallback) = 0;

    /// The files of a record, the first page of them. `recordId` must be there. A record without `pageSize`
    /// is a programming error and ends the process.
    virtual void getRecordFiles(std::optional<GetRecordFilesBean> bean,
                                NetworkCallback<GetRecordFilesResponse> oncallback) = 0;

    /// Begins the upload of a file into a record, as `IFile::filesCreate` does into a folder. `recordId` must
    /// be there; the lock id may be absent.
    virtual void createRecordFile(std::optional<RecordFileBean> bean, std::optional<std::string> lockId,
                                  NetworkCallback<FilesCreateResponse> oncallback) = 0;

    // ---- scopes

    /// Adds scopes to a device's module. Each one that was refused stands in the answer with its reason.
    virtual void addScope(std::optional<AddScopeBean> bean, NetworkCallback<AddScopeResponse> oncallback) = 0;

    /// Takes scopes away. Each one that was refused stands in the answer with its reason.
    virtual void deleteScope(std::optional<DeleteScopeBean> bean,
                             NetworkCallback<DeleteScopeResponse> oncallback) = 0;

    /// The scopes of a device's module.
    virtual void getScope(std::optional<BaseScopeBean> bean,
                          NetworkCallback<GetScopeResponse> oncallback) = 0;

    // ---- configuration

    /// All values of a device's module. A record that lacks a field is a programming error and ends the
    /// process.
    virtual void listConfigInfos(std::optional<ListConfigInfoBean> bean,
                                 NetworkCallback<ConfigInfosResponse> oncallback) = 0;

    /// One value. A record that lacks a field is a programming error and ends the process.
    virtual void getConfigInfo(std::optional<GetConfigInfoBean> bean,
                               NetworkCallback<ConfigInfosResponse> oncallback) = 0;

    /// Sets a value. `deviceId` must be there.
    virtual void addConfigInfo(std::optional<AddConfigInfoBean> bean,
                               NetworkCallback<AddConfigInfosResponse> oncallback) = 0;

    /// Does nothing: no request goes out, and the callback never runs.
    virtual void updateConfigInfo(std::optional<UpdateConfigInfoBean> bean,
                                  NetworkCallback<UpdateConfigInfosResponse> oncallback) = 0;

    BASEAPI_OPERATIONS(IBackUp, unbindDevice, bindDevice, getDevices, createBackupLock, keepBackupLock,
                       deleteBackupLock, backupComplete, backupDelete, backupGet, createRecord, getRecords,
                       getRecordFiles, createRecordFile, addScope, deleteScope, getScope, listConfigInfos,
                       getConfigInfo, addConfigInfo, updateConfigInfo)
};

}  // namespace baseapi::inline v1
