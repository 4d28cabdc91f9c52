#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/files_create.h"
#include "baseapi/json/lenient_int64.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- devices

/// What `bindDevice` takes: a device as it tells of itself.
struct BaseDeviceBean {
    std::optional<std::string> machineCode;
    std::optional<std::string> deviceName;
    std::optional<std::string> deviceOS;

    BASEAPI_FIELDS(BaseDeviceBean, machineCode, deviceName, deviceOS)
};

/// A device as the service knows it.
struct DeviceBean : BaseDeviceBean {
    /// The service sends it as a number or as a text of digits.
    LenientInt64 deviceId;
    std::string createTime;

    BASEAPI_FIELDS_OF(DeviceBean, BaseDeviceBean, deviceId, createTime)
};

/// What `bindDevice` answers.
struct DeviceResponse : BaseResponse {
    std::optional<DeviceBean> data;

    BASEAPI_FIELDS_OF(DeviceResponse, BaseResponse, data)
};

/// What `getDevices` answers.
struct DevicesResponse : BaseResponse {
    std::optional<std::vector<DeviceBean>> data;

    BASEAPI_FIELDS_OF(DevicesResponse, BaseResponse, data)
};

// ---- locks

/// What `createBackupLock` takes.
struct CreateLockBean {
    /// The module to lock: "100" directories, "101" album, "102" contacts.
    std::optional<std::string> moduleCode;

    BASEAPI_FIELDS(CreateLockBean, moduleCode)
};

/// A lock.
struct LockIdBean {
    std::optional<std::string> lockId;

    BASEAPI_FIELDS(LockIdBean, lockId)
};

/// What `createBackupLock` answers.
struct CreateBackupLockResponse : BaseResponse {
    std::optional<LockIdBean> data;

    BASEAPI_FIELDS_OF(CreateBackupLockResponse, BaseResponse, data)
};

// ---- records

/// A record by its id, which goes into the path; what `backupDelete` and `backupGet` take.
struct BaseRecordBean {
    std::optional<std::string> recordId;

    BASEAPI_FIELDS(BaseRecordBean, recordId)
};

/// What `createRecord` takes.
struct CreateRecordBean : BaseRecordBean {
    std::optional<std::string> moduleCode;
    std::optional<std::int64_t> deviceId;
    /// Text of the client's own.
    std::optional<std::string> properties;

    BASEAPI_FIELDS_OF(CreateRecordBean, BaseRecordBean, moduleCode, deviceId, properties)
};

/// What `backupComplete` takes.
struct CompleteRecordBean : BaseRecordBean {
    /// JSON text of the counts.
    std::optional<std::string> properties;

    BASEAPI_FIELDS_OF(CompleteRecordBean, BaseRecordBean, properties)
};

/// A record as the service keeps it.
struct RecordDetailBean : BaseRecordBean {
    std::optional<std::string> moduleCode;
    /// 1: finished. Other values have no meaning here.
    std::int64_t status = 0;
    std::optional<std::string> properties;
    std::int64_t version = 0;
    std::optional<std::string> createTime;
    std::optional<std::string> endTime;
    std::optional<DeviceBean> deviceInfo;

    BASEAPI_FIELDS_OF(RecordDetailBean, BaseRecordBean, moduleCode, status, properties, version, createTime,
                      endTime, deviceInfo)
};

/// What `createRecord` and `backupGet` answer.
struct RecordDetailResponse : BaseResponse {
    std::optional<RecordDetailBean> data;

    BASEAPI_FIELDS_OF(RecordDetailResponse, BaseResponse, data)
};

/// What `getRecords` takes; all of it goes into the query.
struct GetRecordBean {
    /// Absent: the empty text.
    std::optional<std::string> moduleCode;
    /// Absent: 100.
    std::optional<std::int64_t> pageSize;
    /// Absent: the first page.
    std::optional<std::string> cursor;
    /// Absent: 0.
    std::optional<std::int64_t> deviceId;

    BASEAPI_FIELDS(GetRecordBean, moduleCode, pageSize, cursor, deviceId)
};

/// What `getRecords` answers.
struct GetRecordsResponse : BaseResponse {
    std::optional<std::vector<RecordDetailBean>> data;

    BASEAPI_FIELDS_OF(GetRecordsResponse, BaseResponse, data)
};

/// What `getRecordFiles` takes.
struct GetRecordFilesBean : BaseRecordBean {
    /// Must be there.
    std::optional<std::int64_t> pageSize;
    /// Goes nowhere: only the first page can be asked for.
    std::optional<std::string> cursor;

    BASEAPI_FIELDS_OF(GetRecordFilesBean, BaseRecordBean, pageSize, cursor)
};

/// A file of a record.
struct RecordFileDetailBean : BaseRecordBean {
    std::optional<std::string> fileId;
    std::optional<std::string> fileName;
    std::optional<std::string> sha256;
    /// In bytes.
    std::optional<std::string> size;  // as on the wire
    std::optional<std::string> desc;
    std::optional<std::string> createTime;

    BASEAPI_FIELDS_OF(RecordFileDetailBean, BaseRecordBean, fileId, fileName, sha256, size, desc, createTime)
};

/// What `getRecordFiles` answers.
struct GetRecordFilesResponse : BaseResponse {
    std::optional<std::vector<RecordFileDetailBean>> data;

    BASEAPI_FIELDS_OF(GetRecordFilesResponse, BaseResponse, data)
};

/// What `createRecordFile` takes: a file to be created, and the record that it belongs to.
struct RecordFileBean : FilesCreateBean {
    std::optional<std::string> recordId;

    BASEAPI_FIELDS_OF(RecordFileBean, FilesCreateBean, recordId)
};

// ---- scopes

/// What is to be backed up, and where to.
struct PathPair {
    /// The folder on the device.
    std::optional<std::string> localPath;
    /// The folder in the cloud.
    std::optional<std::string> targetFolderPath;

    BASEAPI_FIELDS(PathPair, localPath, targetFolderPath)
};

/// A scope as the service keeps it.
struct ScopeDetail : PathPair {
    static constexpr bool lenient = true;

    std::string scopeId;
    std::string moduleCode;
    std::string createTime;

    BASEAPI_FIELDS_OF(ScopeDetail, PathPair, scopeId, moduleCode, createTime)
};

/// A scope that was not added, and why.
struct ScopeError : PathPair {
    std::optional<std::string> errorCode;  // as on the wire
    std::optional<std::string> msg;

    BASEAPI_FIELDS_OF(ScopeError, PathPair, errorCode, msg)
};

/// What `getScope` takes.
struct BaseScopeBean {
    /// It goes into the path.
    std::int64_t deviceId = 0;
    std::optional<std::string> moduleCode;

    BASEAPI_FIELDS(BaseScopeBean, deviceId, moduleCode)
};

/// What `addScope` takes.
struct AddScopeBean : BaseScopeBean {
    std::optional<std::vector<PathPair>> scopeList;

    BASEAPI_FIELDS_OF(AddScopeBean, BaseScopeBean, scopeList)
};

/// What `deleteScope` takes.
struct DeleteScopeBean : BaseScopeBean {
    std::vector<std::int64_t> scopeIdList;

    BASEAPI_FIELDS_OF(DeleteScopeBean, BaseScopeBean, scopeIdList)
};

/// A scope that was not deleted, and why.
struct DeleteErrorDetail {
    std::int64_t scopeId = 0;
    std::string errorCode;  // as on the wire
    std::string msg;

    BASEAPI_FIELDS(DeleteErrorDetail, scopeId, errorCode, msg)
};

/// What `addScope` answers.
struct AddScopeResponse : BaseResponse {
    static constexpr bool lenient = true;

    std::vector<ScopeDetail> scopeList;
    std::vector<ScopeError> failedScopeList;

    BASEAPI_FIELDS_OF(AddScopeResponse, BaseResponse, scopeList, failedScopeList)
};

/// What `deleteScope` answers.
struct DeleteScopeResponse : BaseResponse {
    static constexpr bool lenient = true;

    std::vector<std::int64_t> scopeIdList;
    std::vector<DeleteErrorDetail> failedScopeList;

    BASEAPI_FIELDS_OF(DeleteScopeResponse, BaseResponse, scopeIdList, failedScopeList)
};

/// What `getScope` answers.
struct GetScopeResponse : BaseResponse {
    static constexpr bool lenient = true;

    std::vector<ScopeDetail> scopeList;

    BASEAPI_FIELDS_OF(GetScopeResponse, BaseResponse, scopeList)
};

// ---- configuration

/// One value of a module's configuration; its keys are in snake case, unlike all others.
struct BaseConfigInfo {
    std::optional<std::string> device_id;     // as on the wire
    std::optional<std::string> module_code;   // as on the wire
    std::optional<std::string> config_name;   // as on the wire
    std::optional<std::string> config_value;  // as on the wire

    BASEAPI_FIELDS(BaseConfigInfo, device_id, module_code, config_name, config_value)
};

/// The same with its description.
struct ConfigInfo : BaseConfigInfo {
    std::optional<std::string> description;

    BASEAPI_FIELDS_OF(ConfigInfo, BaseConfigInfo, description)
};

/// Whose configuration a call is about.
struct BaseConfigInfoBean {
    /// A text here, a number elsewhere; it goes into the path.
    std::optional<std::string> deviceId;  // as on the wire

    BASEAPI_FIELDS(BaseConfigInfoBean, deviceId)
};

/// What `listConfigInfos` takes. Both must be there.
struct ListConfigInfoBean : BaseConfigInfoBean {
    std::optional<std::string> moduleCode;

    BASEAPI_FIELDS_OF(ListConfigInfoBean, BaseConfigInfoBean, moduleCode)
};

/// What `getConfigInfo` takes. All of it must be there.
struct GetConfigInfoBean : BaseConfigInfoBean {
    std::optional<std::string> moduleCode;
    std::optional<std::string> configName;

    BASEAPI_FIELDS_OF(GetConfigInfoBean, BaseConfigInfoBean, moduleCode, configName)
};

/// What `addConfigInfo` takes. Without `deviceId` the call is refused.
struct AddConfigInfoBean : BaseConfigInfoBean {
    std::optional<std::string> moduleCode;
    std::optional<std::string> configName;
    std::optional<std::string> newConfigValue;

    BASEAPI_FIELDS_OF(AddConfigInfoBean, BaseConfigInfoBean, moduleCode, configName, newConfigValue)
};

/// What `updateConfigInfo` takes.
struct UpdateConfigInfoBean : BaseConfigInfoBean {
    std::optional<std::string> moduleCode;
    std::optional<std::string> configName;
    std::optional<std::string> currentConfigValue;
    std::optional<std::string> newConfigValue;

    BASEAPI_FIELDS_OF(UpdateConfigInfoBean, BaseConfigInfoBean, moduleCode, configName, currentConfigValue,
                      newConfigValue)
};

/// What `listConfigInfos` and `getConfigInfo` answer.
struct ConfigInfosResponse : BaseResponse {
    std::vector<ConfigInfo> data;

    BASEAPI_FIELDS_OF(ConfigInfosResponse, BaseResponse, data)
};

/// What `addConfigInfo` answers.
struct AddConfigInfosResponse : BaseResponse {
    std::vector<BaseConfigInfo> data;

    BASEAPI_FIELDS_OF(AddConfigInfosResponse, BaseResponse, data)
};

/// What `updateConfigInfo` would answer.
struct UpdateConfigInfosResponse : BaseResponse {
    std::vector<BaseConfigInfo> data;

    BASEAPI_FIELDS_OF(UpdateConfigInfosResponse, BaseResponse, data)
};

}  // namespace baseapi::inline v1
