#include "baseapi/api/backup/backup_impl.h"

#include <utility>

#include "baseapi/api/backup/requests.h"

namespace baseapi::inline v1 {
namespace {

class BackupImpl : public IBackUp {
    void unbindDevice(std::int64_t deviceId, NetworkCallback<BaseResponse> oncallback) override {
        start<DeleteDeviceRequest>(HTTPMethod::delete_, deviceId, std::move(oncallback));
    }
    void bindDevice(std::optional<BaseDeviceBean> bean, NetworkCallback<DeviceResponse> oncallback) override {
        start<BindDeviceRequest>(HTTPMethod::post, std::move(bean), std::move(oncallback));
    }
    void getDevices(NetworkCallback<DevicesResponse> onCallback) override {
        start<GetDevicesRequest>(HTTPMethod::get, std::move(onCallback));
    }
    void createBackupLock(std::optional<CreateLockBean> bean,
                          NetworkCallback<CreateBackupLockResponse> oncallback) override {
        start<CreateBackupLockRequest>(HTTPMethod::post, std::move(bean), std::move(oncallback));
    }
    void keepBackupLock(std::optional<std::string> lockId,
                        NetworkCallback<BaseResponse> oncallback) override {
        start<KeepBackupLockRequest>(HTTPMethod::patch, std::move(lockId), std::move(oncallback));
    }
    void deleteBackupLock(std::optional<std::string> lockId,
                          NetworkCallback<BaseResponse> oncallback) override {
        start<DeleteBackupLockRequest>(HTTPMethod::delete_, std::move(lockId), std::move(oncallback));
    }
    void backupComplete(std::optional<CompleteRecordBean> bean, std::optional<std::string> lockId,
                        NetworkCallback<BaseResponse> oncallback) override {
        start<BackupCompleteRequest>(HTTPMethod::patch, std::move(bean), std::move(lockId),
                                     std::move(oncallback));
    }
    void backupDelete(std::optional<BaseRecordBean> bean, std::optional<std::string> lockId,
                      NetworkCallback<BaseResponse> oncallback) override {
        start<BackupDeleteRequest>(HTTPMethod::delete_, std::move(bean), std::move(lockId),
                                   std::move(oncallback));
    }
    void backupGet(std::optional<BaseRecordBean> bean,
                   NetworkCallback<RecordDetailResponse> oncallback) override {
        start<BackupGetRequest>(HTTPMethod::get, std::move(bean), std::move(oncallback));
    }
    void createRecord(std::optional<CreateRecordBean> bean, std::optional<std::string> lockId,
                      NetworkCallback<RecordDetailResponse> oncallback) override {
        start<CreateRecordRequest>(HTTPMethod::post, std::move(bean), std::move(lockId),
                                   std::move(oncallback));
    }
    void getRecords(std::optional<GetRecordBean> bean,
                    NetworkCallback<GetRecordsResponse> oncallback) override {
        start<GetRecordsRequest>(HTTPMethod::get, std::move(bean), std::move(oncallback));
    }
    void getRecordFiles(std::optional<GetRecordFilesBean> bean,
                        NetworkCallback<GetRecordFilesResponse> oncallback) override {
        start<GetRecordFilesRequest>(HTTPMethod::get, std::move(bean), std::move(oncallback));
    }
    void createRecordFile(std::optional<RecordFileBean> bean, std::optional<std::string> lockId,
                          NetworkCallback<FilesCreateResponse> oncallback) override {
        start<CreateRecordFileRequest>(HTTPMethod::post, std::move(bean), std::move(lockId),
                                       std::move(oncallback));
    }
    void addScope(std::optional<AddScopeBean> bean, NetworkCallback<AddScopeResponse> oncallback) override {
        start<AddScopeRequest>(HTTPMethod::post, std::move(bean), std::move(oncallback));
    }
    void deleteScope(std::optional<DeleteScopeBean> bean,
                     NetworkCallback<DeleteScopeResponse> oncallback) override {
        start<DeleteScopeRequest>(HTTPMethod::delete_, std::move(bean), std::move(oncallback));
    }
    void getScope(std::optional<BaseScopeBean> bean, NetworkCallback<GetScopeResponse> oncallback) override {
        start<GetScopeRequest>(HTTPMethod::get, std::move(bean), std::move(oncallback));
    }
    void listConfigInfos(std::optional<ListConfigInfoBean> bean,
                         NetworkCallback<ConfigInfosResponse> oncallback) override {
        start<ListConfigInfoRequest>(HTTPMethod::get, std::move(bean), std::move(oncallback));
    }
    void getConfigInfo(std::optional<GetConfigInfoBean> bean,
                       NetworkCallback<ConfigInfosResponse> oncallback) override {
        start<GetConfigInfoRequest>(HTTPMethod::get, std::move(bean), std::move(oncallback));
    }
    void addConfigInfo(std::optional<AddConfigInfoBean> bean,
                       NetworkCallback<AddConfigInfosResponse> oncallback) override {
        start<AddConfigInfoRequest>(HTTPMethod::post, std::move(bean), std::move(oncallback));
    }
    void updateConfigInfo(std::optional<UpdateConfigInfoBean>,
                          NetworkCallback<UpdateConfigInfosResponse>) override {}
};

}  // namespace

std::unique_ptr<IBackUp> makeBackupImpl() {
    return std::make_unique<BackupImpl>();
}

}  // namespace baseapi::inline v1
