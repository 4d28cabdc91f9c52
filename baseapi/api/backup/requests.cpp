#include "baseapi/api/backup/requests.h"

#include "baseapi/net/query_text.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {
namespace {

constexpr const char* lockHeader = "x-backup-lock-id";

// The service knows each call under one of two prefixes; which one follows no rule.
std::string plain(const std::string& resource) {
    return "/quillbox/ose/v1/backup/" + resource;
}
std::string cloudFile(const std::string& resource) {
    return "/quillbox/cloudfileh5/v1/backup/" + resource;
}

std::string ofDevice(const std::string& deviceId, const std::string& resource) {
    return plain("device/" + deviceId + resource);
}
std::string ofDevice(std::int64_t deviceId, const std::string& resource) {
    return ofDevice(std::to_string(deviceId), resource);
}

}  // namespace

int LockReq::buildAt(std::string path) {
    if (!lockId) return refused;
    setAddress(std::move(path));
    setHeader(lockHeader, lockId);
    return built;
}

int DeleteDeviceRequest::buildParams() {
    setAddress(ofDevice(deviceId, ""));
    return built;
}

int BindDeviceRequest::buildParams() {
    if (!bean) return refused;
    setAddress(cloudFile("device"));
    return setBodyOrLog(*bean);
}

int GetDevicesRequest::buildParams() {
    setAddress(cloudFile("device"));
    return built;
}

int CreateBackupLockRequest::buildParams() {
    if (!bean) return refused;
    setAddress(plain("lock"));
    return setBodyOrLog(*bean);
}

int KeepBackupLockRequest::buildParams() {
    return buildAt(cloudFile("lock"));
}

int DeleteBackupLockRequest::buildParams() {
    return buildAt(plain("lock"));
}

int BackupCompleteRequest::buildParams() {
    if (!bean || !bean->recordId) return refused;
    setAddress(cloudFile("record/" + *bean->recordId));
    setHeader(lockHeader, lockId);
    return setBodyOrLog(*bean);
}

int BackupDeleteRequest::buildParams() {
    if (!bean || !bean->recordId) return refused;
    setAddress(plain("record/" + *bean->recordId));
    setHeader(lockHeader, lockId);
    return setBodyOrLog(*bean);
}

int BackupGetRequest::buildParams() {
    if (!bean || !bean->recordId) return refused;
    setAddress(plain("record/" + *bean->recordId));
    return setBodyOrLog(*bean);  // never sent with a GET, but what has no JSON form is refused
}

int CreateRecordRequest::buildParams() {
    if (!bean || !lockId) return refused;
    setAddress(plain("record"));
    setHeader(lockHeader, lockId);
    return setBodyOrLog(*bean);
}

int GetRecordsRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("deviceId", bean->deviceId.value_or(0));
    query.add("moduleCode", bean->moduleCode.value_or(""));
    query.add("pageSize", bean->pageSize.value_or(100));
    query.addIfPresent("cursor", bean->cursor);
    setAddress(cloudFile("record"), query.text());
    return built;
}

int GetRecordFilesRequest::buildParams() {
    if (!bean || !bean->recordId) return refused;
    QueryText query;
    query.add("recordId", *bean->recordId);
    query.add("pageSize", given(bean->pageSize, "baseapi/IBackUp: pageSize"));
    setAddress(plain("record/" + *bean->recordId + "/files"), query.text());
    return setBodyOrLog(*bean);  // never sent with a GET, but what has no JSON form is refused
}

int CreateRecordFileRequest::buildParams() {
    if (!bean || !bean->recordId) return refused;
    setAddress(plain("record/" + *bean->recordId + "/file"));
    setHeader(lockHeader, lockId);
    return setBodyOrLog(*bean);
}

int AddScopeRequest::buildParams() {
    if (!bean) return refused;
    setAddress(ofDevice(bean->deviceId, "/scope"));
    return setBody(*bean);
}

int DeleteScopeRequest::buildParams() {
    if (!bean) return refused;
    setAddress(ofDevice(bean->deviceId, "/scope"));
    return setBody(*bean);
}

int GetScopeRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("moduleCode", bean->moduleCode.value_or(""));
    setAddress(ofDevice(bean->deviceId, "/scope"), query.text());
    return built;
}

int ListConfigInfoRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("moduleCode", given(bean->moduleCode, "baseapi/IBackUp: moduleCode"));
    setAddress(ofDevice(given(bean->deviceId, "baseapi/IBackUp: deviceId"), "/configs"), query.text());
    return built;
}

int GetConfigInfoRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("moduleCode", given(bean->moduleCode, "baseapi/IBackUp: moduleCode"));
    query.add("congigName", given(bean->configName, "baseapi/IBackUp: configName"));  // as on the wire
    setAddress(ofDevice(given(bean->deviceId, "baseapi/IBackUp: deviceId"), "/config"), query.text());
    return built;
}

int AddConfigInfoRequest::buildParams() {
    if (!bean || !bean->deviceId) return refused;
    setAddress(ofDevice(*bean->deviceId, "/config"));
    return setBody(*bean);
}

int UpdateConfigInfoRequest::buildParams() {
    if (!bean || !bean->deviceId) return refused;
    setAddress(ofDevice(*bean->deviceId, "/config"));
    return setBody(*bean);
}

}  // namespace baseapi::inline v1
