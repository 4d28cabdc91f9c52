#include "baseapi/api/backup/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

DeviceBean sampleDevice() {
    DeviceBean record;
    record.deviceId = {7};
    record.createTime = "t1";
    return record;
}

PathPair samplePath() {
    return {.localPath = "/a", .targetFolderPath = "/b"};
}

// ---- devices

TEST(BackupRecords, BaseDeviceBeanIsItsWireText) {
    expectWireText(BaseDeviceBean{.machineCode = "m", .deviceName = "n", .deviceOS = "o"},
                   R"({"machineCode":"m","deviceName":"n","deviceOS":"o"})");
}

TEST(BackupRecords, DeviceBeanIsItsWireText) {
    auto record = sampleDevice();
    record.machineCode = "m";
    record.deviceName = "n";
    record.deviceOS = "o";
    expectWireText(record,
                   R"({"deviceId":7,"createTime":"t1","machineCode":"m","deviceName":"n","deviceOS":"o"})");
}

TEST(BackupRecords, ADeviceIdComesAsANumberOrAsAText) {
    EXPECT_EQ(decoded<DeviceBean>(R"({"deviceId":123,"createTime":""})").deviceId.value, 123);
    EXPECT_EQ(decoded<DeviceBean>(R"({"deviceId":"123","createTime":""})").deviceId.value, 123);
    for (const auto* other : {R"("deviceId":"abc",)", R"("deviceId":"",)", R"("deviceId":null,)",
                              R"("deviceId":[],)", R"("deviceId":true,)", ""}) {
        const std::string text = std::string("{") + other + R"("createTime":""})";
        EXPECT_EQ(decoded<DeviceBean>(text).deviceId.value, 0) << text;
    }
}

TEST(BackupRecords, ADeviceWithoutItsTimeFails) {
    expectFailure<DeviceBean>(R"({"deviceId":1})", Kind::keyNotFound, "");
    expectFailure<DeviceBean>(R"({"deviceId":1,"createTime":null})", Kind::valueNotFound, "createTime");
}

TEST(BackupRecords, DeviceResponseIsItsWireText) {
    DeviceResponse record;
    record.data = sampleDevice();
    record.code = 1;
    record.msg = "m";
    record.httpCode = 2;
    expectWireText(record, R"({"data":{"deviceId":7,"createTime":"t1"},"code":1,"msg":"m","httpCode":2})");
}

TEST(BackupRecords, DevicesResponseIsItsWireText) {
    DevicesResponse record;
    record.data = {sampleDevice(), sampleDevice()};
    record.code = 1;
    expectWireText(
        record, R"({"data":[{"deviceId":7,"createTime":"t1"},{"deviceId":7,"createTime":"t1"}],"code":1})");
}

// ---- locks

TEST(BackupRecords, CreateLockBeanIsItsWireText) {
    expectWireText(CreateLockBean{.moduleCode = "100"}, R"({"moduleCode":"100"})");
}

TEST(BackupRecords, LockIdBeanIsItsWireText) {
    expectWireText(LockIdBean{.lockId = "l"}, R"({"lockId":"l"})");
}

TEST(BackupRecords, CreateBackupLockResponseIsItsWireText) {
    CreateBackupLockResponse record;
    record.data = LockIdBean{.lockId = "l"};
    record.code = 1;
    expectWireText(record, R"({"data":{"lockId":"l"},"code":1})");
}

// ---- records

TEST(BackupRecords, BaseRecordBeanIsItsWireText) {
    expectWireText(BaseRecordBean{.recordId = "r"}, R"({"recordId":"r"})");
}

TEST(BackupRecords, CreateRecordBeanIsItsWireText) {
    CreateRecordBean record;
    record.moduleCode = "100";
    record.deviceId = 5368709120;
    record.properties = "p";
    expectWireText(record, R"({"moduleCode":"100","deviceId":5368709120,"properties":"p"})");
    record.recordId = "r";
    expectWireText(record, R"({"moduleCode":"100","deviceId":5368709120,"properties":"p","recordId":"r"})");
}

TEST(BackupRecords, CompleteRecordBeanIsItsWireText) {
    CompleteRecordBean record;
    record.recordId = "r";
    record.properties = R"({"backupCount":1})";
    expectWireText(record, R"({"properties":"{\"backupCount\":1}","recordId":"r"})");
}

TEST(BackupRecords, RecordDetailBeanIsItsWireText) {
    RecordDetailBean record;
    record.recordId = "r";
    record.moduleCode = "100";
    record.status = 1;
    record.properties = "p";
    record.version = 2;
    record.createTime = "t1";
    record.endTime = "t2";
    record.deviceInfo = sampleDevice();
    expectWireText(record, R"({"moduleCode":"100","status":1,"properties":"p","version":2,"createTime":"t1",)"
                           R"("endTime":"t2","deviceInfo":{"deviceId":7,"createTime":"t1"},"recordId":"r"})");
}

TEST(BackupRecords, ARecordWithoutStatusOrVersionFails) {
    expectFailure<RecordDetailBean>(R"({"recordId":"r","version":1})", Kind::keyNotFound, "");
    expectFailure<RecordDetailBean>(R"({"recordId":"r","status":1})", Kind::keyNotFound, "");
    expectFailure<RecordDetailBean>(R"({"status":null,"version":1})", Kind::valueNotFound, "status");
    expectFailure<RecordDetailBean>(R"({"status":"1","version":1})", Kind::typeMismatch, "status");
}

TEST(BackupRecords, RecordDetailResponseIsItsWireText) {
    RecordDetailResponse record;
    record.data.emplace().recordId = "r";
    record.code = 1;
    expectWireText(record, R"({"data":{"status":0,"version":0,"recordId":"r"},"code":1})");
}

TEST(BackupRecords, GetRecordBeanIsItsWireText) {
    expectWireText(GetRecordBean{.moduleCode = "100", .pageSize = 5, .cursor = "c", .deviceId = 7},
                   R"({"moduleCode":"100","pageSize":5,"cursor":"c","deviceId":7})");
}

TEST(BackupRecords, GetRecordsResponseIsItsWireText) {
    GetRecordsResponse record;
    record.data.emplace(1).front().recordId = "r";
    record.code = 1;
    expectWireText(record, R"({"data":[{"status":0,"version":0,"recordId":"r"}],"code":1})");
}

TEST(BackupRecords, GetRecordFilesBeanIsItsWireText) {
    GetRecordFilesBean record;
    record.recordId = "r";
    record.pageSize = 5;
    record.cursor = "c";
    expectWireText(record, R"({"pageSize":5,"cursor":"c","recordId":"r"})");
}

TEST(BackupRecords, RecordFileDetailBeanIsItsWireText) {
    RecordFileDetailBean record;
    record.recordId = "r";
    record.fileId = "f";
    record.fileName = "n";
    record.sha256 = "ab";
    record.size = "12";
    record.desc = "d";
    record.createTime = "t1";
    expectWireText(record, R"({"fileId":"f","fileName":"n","sha256":"ab","size":"12","desc":"d",)"
                           R"("createTime":"t1","recordId":"r"})");
    expectFailure<RecordFileDetailBean>(R"({"size":12})", Kind::typeMismatch, "size");
}

TEST(BackupRecords, GetRecordFilesResponseIsItsWireText) {
    GetRecordFilesResponse record;
    record.data.emplace(1).front().fileId = "f";
    record.code = 1;
    expectWireText(record, R"({"data":[{"fileId":"f"}],"code":1})");
}

TEST(BackupRecords, RecordFileBeanIsAFileWithItsRecord) {
    RecordFileBean record;
    record.recordId = "r";
    record.fileName = "n";
    record.length = 12;
    record.scene = "backup";
    expectWireText(record, R"({"recordId":"r","fileName":"n","length":12,"uploadType":1,"autoRename":2,)"
                           R"("hidden":false,"scene":"backup"})");
}

// ---- scopes

TEST(BackupRecords, PathPairIsItsWireText) {
    expectWireText(samplePath(), R"({"localPath":"/a","targetFolderPath":"/b"})");
}

TEST(BackupRecords, ScopeDetailIsItsWireText) {
    expectWireText(
        ScopeDetail{samplePath(), "3", "100", "t1"},
        R"({"scopeId":"3","moduleCode":"100","createTime":"t1","localPath":"/a","targetFolderPath":"/b"})");
}

TEST(BackupRecords, AScopeWithoutItsIdHasAnEmptyOne) {
    for (const auto* text : {"{}", R"({"scopeId":null,"moduleCode":null,"createTime":null})"}) {
        const auto scope = decoded<ScopeDetail>(text);
        EXPECT_TRUE(scope == ScopeDetail{}) << text;
        EXPECT_EQ(scope.scopeId, "");
        EXPECT_EQ(encode(scope), R"({"scopeId":"","moduleCode":"","createTime":""})");
    }
}

TEST(BackupRecords, ScopeErrorIsItsWireText) {
    ScopeError record;
    record.localPath = "/a";
    record.errorCode = "1";
    record.msg = "m";
    expectWireText(record, R"({"errorCode":"1","msg":"m","localPath":"/a"})");
}

TEST(BackupRecords, BaseScopeBeanIsItsWireText) {
    expectWireText(BaseScopeBean{.deviceId = 7, .moduleCode = "100"}, R"({"deviceId":7,"moduleCode":"100"})");
    expectFailure<BaseScopeBean>("{}", Kind::keyNotFound, "");
    expectFailure<BaseScopeBean>(R"({"deviceId":"7"})", Kind::typeMismatch, "deviceId");
}

TEST(BackupRecords, AddScopeBeanIsItsWireText) {
    AddScopeBean record;
    record.deviceId = 7;
    record.scopeList = {samplePath()};
    expectWireText(record, R"({"scopeList":[{"localPath":"/a","targetFolderPath":"/b"}],"deviceId":7})");
}

TEST(BackupRecords, DeleteScopeBeanIsItsWireText) {
    DeleteScopeBean record;
    record.deviceId = 7;
    record.scopeIdList = {1, 5368709120};
    expectWireText(record, R"({"scopeIdList":[1,5368709120],"deviceId":7})");
    expectFailure<DeleteScopeBean>(R"({"deviceId":7})", Kind::keyNotFound, "");
}

TEST(BackupRecords, DeleteErrorDetailIsItsWireText) {
    expectWireText(DeleteErrorDetail{.scopeId = 1, .errorCode = "2", .msg = "m"},
                   R"({"scopeId":1,"errorCode":"2","msg":"m"})");
    expectFailure<DeleteErrorDetail>(R"({"scopeId":1,"errorCode":"2"})", Kind::keyNotFound, "");
}

TEST(BackupRecords, AddScopeResponseIsItsWireText) {
    AddScopeResponse record;
    record.scopeList = {ScopeDetail{samplePath(), "3", "100", "t1"}};
    record.failedScopeList.emplace_back().errorCode = "1";
    record.code = 1;
    expectWireText(record,
                   R"({"scopeList":[{"scopeId":"3","moduleCode":"100","createTime":"t1","localPath":"/a",)"
                   R"("targetFolderPath":"/b"}],"failedScopeList":[{"errorCode":"1"}],"code":1})");
}

TEST(BackupRecords, DeleteScopeResponseIsItsWireText) {
    DeleteScopeResponse record;
    record.scopeIdList = {1, 2};
    record.failedScopeList = {DeleteErrorDetail{.scopeId = 3, .errorCode = "4", .msg = "m"}};
    record.code = 1;
    expectWireText(
        record,
        R"({"scopeIdList":[1,2],"failedScopeList":[{"scopeId":3,"errorCode":"4","msg":"m"}],"code":1})");
}

TEST(BackupRecords, GetScopeResponseIsItsWireText) {
    GetScopeResponse record;
    record.scopeList = {ScopeDetail{{}, "3", "100", "t1"}};
    record.code = 1;
    expectWireText(record,
                   R"({"scopeList":[{"scopeId":"3","moduleCode":"100","createTime":"t1"}],"code":1})");
}

TEST(BackupRecords, AnswersWithoutAListHaveAnEmptyOne) {
    for (const auto* text : {R"({"code":1})", R"({"scopeList":null,"failedScopeList":null,"code":1})"}) {
        EXPECT_EQ(encode(decoded<AddScopeResponse>(text)),
                  R"({"scopeList":[],"failedScopeList":[],"code":1})");
        EXPECT_EQ(encode(decoded<DeleteScopeResponse>(text)),
                  R"({"scopeIdList":[],"failedScopeList":[],"code":1})");
        EXPECT_EQ(encode(decoded<GetScopeResponse>(text)), R"({"scopeList":[],"code":1})");
    }
}

// ---- configuration

TEST(BackupRecords, BaseConfigInfoHasKeysInSnakeCase) {
    expectWireText(
        BaseConfigInfo{.device_id = "7", .module_code = "101", .config_name = "n", .config_value = "v"},
        R"({"device_id":"7","module_code":"101","config_name":"n","config_value":"v"})");
}

TEST(BackupRecords, ConfigInfoIsItsWireText) {
    ConfigInfo record;
    record.device_id = "7";
    record.description = "d";
    expectWireText(record, R"({"description":"d","device_id":"7"})");
}

TEST(BackupRecords, BaseConfigInfoBeanIsItsWireText) {
    expectWireText(BaseConfigInfoBean{.deviceId = "7"}, R"({"deviceId":"7"})");
    expectFailure<BaseConfigInfoBean>(R"({"deviceId":7})", Kind::typeMismatch, "deviceId");
}

TEST(BackupRecords, ListConfigInfoBeanIsItsWireText) {
    expectWireText(ListConfigInfoBean{{"7"}, "101"}, R"({"moduleCode":"101","deviceId":"7"})");
}

TEST(BackupRecords, GetConfigInfoBeanIsItsWireText) {
    expectWireText(GetConfigInfoBean{{"7"}, "101", "n"},
                   R"({"moduleCode":"101","configName":"n","deviceId":"7"})");
}

TEST(BackupRecords, AddConfigInfoBeanIsItsWireText) {
    expectWireText(AddConfigInfoBean{{"7"}, "101", "n", "v"},
                   R"({"moduleCode":"101","configName":"n","newConfigValue":"v","deviceId":"7"})");
}

TEST(BackupRecords, UpdateConfigInfoBeanIsItsWireText) {
    expectWireText(
        UpdateConfigInfoBean{{"7"}, "101", "n", "old", "new"},
        R"({"moduleCode":"101","configName":"n","currentConfigValue":"old","newConfigValue":"new","deviceId":"7"})");
}

TEST(BackupRecords, ConfigInfosResponseIsItsWireText) {
    ConfigInfosResponse record;
    record.data.emplace_back().config_name = "n";
    record.code = 1;
    expectWireText(record, R"({"data":[{"config_name":"n"}],"code":1})");
}

TEST(BackupRecords, AddConfigInfosResponseIsItsWireText) {
    AddConfigInfosResponse record;
    record.data = {BaseConfigInfo{.config_name = "n"}};
    record.code = 1;
    expectWireText(record, R"({"data":[{"config_name":"n"}],"code":1})");
}

TEST(BackupRecords, UpdateConfigInfosResponseIsItsWireText) {
    UpdateConfigInfosResponse record;
    record.data = {BaseConfigInfo{.config_name = "n"}};
    expectWireText(record, R"({"data":[{"config_name":"n"}]})");
}

TEST(BackupRecords, AnAnswerOfValuesWithoutItsListFails) {
    expectFailure<ConfigInfosResponse>(R"({"code":0})", Kind::keyNotFound, "");
    expectFailure<AddConfigInfosResponse>(R"({"code":0})", Kind::keyNotFound, "");
    expectFailure<UpdateConfigInfosResponse>(R"({"data":null})", Kind::valueNotFound, "data");
}

}  // namespace
}  // namespace baseapi
