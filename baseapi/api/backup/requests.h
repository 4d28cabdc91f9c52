#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/api/backup/records.h"
#include "baseapi/net/base_req.h"

namespace baseapi::inline v1 {

// One class for each operation of `IBackUp`, in its order: what a request is made of, and nothing else.

/// A request made from a lock id alone, which goes into the header.
class LockReq : public BaseReq<BaseResponse> {
  public:
    LockReq(HTTPMethod verb, std::optional<std::string> lock, NetworkCallback<BaseResponse> callback)
        : BaseReq(verb, std::move(callback)), lockId(std::move(lock)) {}

    std::optional<std::string> lockId;

  protected:
    /// Sets the address and the header, or refuses where the lock id is absent.
    int buildAt(std::string path);
};

/// A request made from a record of the caller, with the lock id in the header where there is one.
template <class Bean, class T>
class LockedReq : public BeanReq<Bean, T> {
  public:
    LockedReq(HTTPMethod verb, std::optional<Bean> record, std::optional<std::string> lock,
              NetworkCallback<T> callback)
        : BeanReq<Bean, T>(verb, std::move(record), std::move(callback)), lockId(std::move(lock)) {}

    std::optional<std::string> lockId;
};

class DeleteDeviceRequest : public BaseReq<BaseResponse> {
  public:
    DeleteDeviceRequest(HTTPMethod verb, std::int64_t device, NetworkCallback<BaseResponse> callback)
        : BaseReq(verb, std::move(callback)), deviceId(device) {}
    int buildParams() override;

    std::int64_t deviceId;
};

class BindDeviceRequest : public BeanReq<BaseDeviceBean, DeviceResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetDevicesRequest : public BaseReq<DevicesResponse> {
  public:
    using BaseReq::BaseReq;
    int buildParams() override;
};

class CreateBackupLockRequest : public BeanReq<CreateLockBean, CreateBackupLockResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class KeepBackupLockRequest : public LockReq {
  public:
    using LockReq::LockReq;
    int buildParams() override;
};

class DeleteBackupLockRequest : public LockReq {
  public:
    using LockReq::LockReq;
    int buildParams() override;
};

class BackupCompleteRequest : public LockedReq<CompleteRecordBean, BaseResponse> {
  public:
    using LockedReq::LockedReq;
    int buildParams() override;
};

class BackupDeleteRequest : public LockedReq<BaseRecordBean, BaseResponse> {
  public:
    using LockedReq::LockedReq;
    int buildParams() override;
};

class BackupGetRequest : public BeanReq<BaseRecordBean, RecordDetailResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CreateRecordRequest : public LockedReq<CreateRecordBean, RecordDetailResponse> {
  public:
    using LockedReq::LockedReq;
    int buildParams() override;
};

class GetRecordsRequest : public BeanReq<GetRecordBean, GetRecordsResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetRecordFilesRequest : public BeanReq<GetRecordFilesBean, GetRecordFilesResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class CreateRecordFileRequest : public LockedReq<RecordFileBean, FilesCreateResponse> {
  public:
    using LockedReq::LockedReq;
    int buildParams() override;
};

class AddScopeRequest : public BeanReq<AddScopeBean, AddScopeResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class DeleteScopeRequest : public BeanReq<DeleteScopeBean, DeleteScopeResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetScopeRequest : public BeanReq<BaseScopeBean, GetScopeResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class ListConfigInfoRequest : public BeanReq<ListConfigInfoBean, ConfigInfosResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class GetConfigInfoRequest : public BeanReq<GetConfigInfoBean, ConfigInfosResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

class AddConfigInfoRequest : public BeanReq<AddConfigInfoBean, AddConfigInfosResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

/// Sent by nothing: `updateConfigInfo` does nothing, and the service names no verb for it.
class UpdateConfigInfoRequest : public BeanReq<UpdateConfigInfoBean, UpdateConfigInfosResponse> {
  public:
    using BeanReq::BeanReq;
    int buildParams() override;
};

}  // namespace baseapi::inline v1
