#include "baseapi/api/backup/i_back_up.h"

#include <gmock/gmock.h>

#include <memory>

#include "baseapi/api/backup/requests.h"
#include "tests/api/operation_table.h"
#include "tests/support/test_platform.h"

namespace baseapi::i_back_up {
namespace {

const std::string plain = "/quillbox/ose/v1/backup/";
const std::string cloudFile = "/quillbox/cloudfileh5/v1/backup/";

const std::string noData = R"({"data":[]})";
const std::string noScopes = R"({"scopeList":[]})";
const std::string noneFailed = R"({"scopeList":[],"failedScopeList":[]})";
const std::string noneDeleted = R"({"scopeIdList":[],"failedScopeList":[]})";

/// A row of an operation that takes a lock id.
OperationRow locked(OperationRow row, std::optional<std::string> lockId) {
    row.lockId = std::move(lockId);
    if (row.sent) row.sent->lockId = row.lockId;
    return row;
}
OperationRow ofDevice(OperationRow row, std::int64_t deviceId) {
    row.deviceId = deviceId;
    return row;
}
/// A row of an operation whose response record always has keys of its own.
OperationRow answered(OperationRow row, std::string answer) {
    row.answer = std::move(answer);
    return row;
}

Sent get(const std::string& target) {
    return {"GET", target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", target, std::move(body)};
}
Sent patch(const std::string& target, std::optional<std::string> body) {
    return {"PATCH", target, std::move(body)};
}
Sent del(const std::string& target, std::optional<std::string> body) {
    return {"DELETE", target, std::move(body)};
}

const std::string device = R"({"machineCode":"m","deviceName":"Anna's phone é","deviceOS":"os"})";
const std::string complete = R"({"properties":"{\"backupCount\":1}","recordId":"r1"})";
const std::string record = R"({"recordId":"r1"})";
const std::string newRecord =
    R"({"moduleCode":"102","deviceId":9007199254740993,"properties":"p","recordId":"r1"})";
const std::string recordFile =
    R"({"recordId":"r1","createdTime":"t1","description":"d","mimeType":"m","fileName":"n","fileType":"1",)"
    R"("parentFolder":["p"],"sha256":"ab","length":5368709120,"uploadMode":"u","uploadType":3,"autoRename":4,)"
    R"("multiParts":[{"partNumber":1,"partSize":2,"partOffset":3,"hashCtx":[4,4294967295],"uploadUrl":"http://a/?b=c&d",)"
    R"("partId":"i"}],"containerId":"c","preHash":"h","proofCode":"p","hidden":true,"scene":"backup"})";
const std::string scopes =
    R"({"scopeList":[{"localPath":"/a","targetFolderPath":"/b"},{"localPath":"/c"}],"deviceId":7,"moduleCode":"100"})";
const std::string scopeIds = R"({"scopeIdList":[1,-2],"deviceId":7,"moduleCode":"100"})";
const std::string newValue =
    R"({"moduleCode":"101","configName":"wifi","newConfigValue":"on","deviceId":"7"})";

const std::vector<OperationRow> rows = {
    {"unbindDevice", "zero", absent, del(plain + "device/0", absent)},
    ofDevice({"unbindDevice", "full", absent, del(plain + "device/9223372036854775807", absent)}, INT64_MAX),
    ofDevice({"unbindDevice", "negative", absent, del(plain + "device/-1", absent)}, -1),

    {"bindDevice", "absent", absent, refused},
    {"bindDevice", "fresh", "{}", post(cloudFile + "device", "{}")},
    {"bindDevice", "full", device, post(cloudFile + "device", device)},

    {"getDevices", "always", absent, get(cloudFile + "device")},

    {"createBackupLock", "absent", absent, refused},
    {"createBackupLock", "fresh", "{}", post(plain + "lock", "{}")},
    {"createBackupLock", "full", R"({"moduleCode":"102"})", post(plain + "lock", R"({"moduleCode":"102"})")},

    {"keepBackupLock", "absent", absent, refused},
    locked({"keepBackupLock", "full", absent, patch(cloudFile + "lock", absent)}, "l1"),
    locked({"keepBackupLock", "empty", absent, patch(cloudFile + "lock", absent)}, ""),

    {"deleteBackupLock", "absent", absent, refused},
    locked({"deleteBackupLock", "full", absent, del(plain + "lock", absent)}, "l1"),
    locked({"deleteBackupLock", "empty", absent, del(plain + "lock", absent)}, ""),

    locked({"backupComplete", "absent", absent, refused}, "l1"),
    locked({"backupComplete", "fresh", "{}", refused}, "l1"),
    locked({"backupComplete", "full", complete, patch(cloudFile + "record/r1", complete)}, "l1"),
    locked({"backupComplete", "withoutRecordId", R"({"properties":"p"})", refused}, "l1"),
    locked({"backupComplete", "emptyRecordId", R"({"recordId":""})",
            patch(cloudFile + "record/", R"({"recordId":""})")},
           "l1"),
    locked({"backupComplete", "withoutProperties", record, patch(cloudFile + "record/r1", record)}, "l1"),
    {"backupComplete", "withoutLockId", complete, patch(cloudFile + "record/r1", complete)},
    locked({"backupComplete", "emptyLockId", complete, patch(cloudFile + "record/r1", complete)}, ""),

    locked({"backupDelete", "absent", absent, refused}, "l1"),
    locked({"backupDelete", "fresh", "{}", refused}, "l1"),
    locked({"backupDelete", "full", record, del(plain + "record/r1", record)}, "l1"),
    locked({"backupDelete", "recordIdAsItIs", R"({"recordId":"a/b%20?c"})",
            del(plain + "record/a/b%20?c", R"({"recordId":"a/b%20?c"})")},
           "l1"),
    {"backupDelete", "withoutLockId", record, del(plain + "record/r1", record)},
    locked({"backupDelete", "emptyLockId", record, del(plain + "record/r1", record)}, ""),

    {"backupGet", "absent", absent, refused},
    {"backupGet", "fresh", "{}", refused},
    {"backupGet", "full", record, get(plain + "record/r1")},
    {"backupGet", "emptyRecordId", R"({"recordId":""})", get(plain + "record/")},

    locked({"createRecord", "absent", absent, refused}, "l1"),
    locked({"createRecord", "fresh", "{}", post(plain + "record", "{}")}, "l1"),
    locked({"createRecord", "full", newRecord, post(plain + "record", newRecord)}, "l1"),
    locked({"createRecord", "withoutRecordId", R"({"moduleCode":"102","deviceId":7,"properties":"p"})",
            post(plain + "record", R"({"moduleCode":"102","deviceId":7,"properties":"p"})")},
           "l1"),
    {"createRecord", "withoutLockId", newRecord, refused},
    locked({"createRecord", "emptyLockId", newRecord, post(plain + "record", newRecord)}, ""),

    {"getRecords", "absent", absent, refused},
    {"getRecords", "fresh", "{}", get(cloudFile + "record?deviceId=0&moduleCode=&pageSize=100")},
    {"getRecords", "full", R"({"moduleCode":"100","pageSize":5,"cursor":"c","deviceId":7})",
     get(cloudFile + "record?deviceId=7&moduleCode=100&pageSize=5&cursor=c")},
    {"getRecords", "emptyCursor", R"({"cursor":""})",
     get(cloudFile + "record?deviceId=0&moduleCode=&pageSize=100&cursor=")},
    {"getRecords", "withoutCursor", R"({"moduleCode":"100","pageSize":0,"deviceId":-7})",
     get(cloudFile + "record?deviceId=-7&moduleCode=100&pageSize=0")},
    {"getRecords", "valuesAsTheyAre", R"({"moduleCode":"a%20b&c=d"})",
     get(cloudFile + "record?deviceId=0&moduleCode=a%20b&c=d&pageSize=100")},

    {"getRecordFiles", "absent", absent, refused},
    {"getRecordFiles", "fresh", "{}", refused},
    {"getRecordFiles", "full", R"({"recordId":"r1","pageSize":5,"cursor":"c"})",
     get(plain + "record/r1/files?recordId=r1&pageSize=5")},
    {"getRecordFiles", "emptyRecordId", R"({"recordId":"","pageSize":0})",
     get(plain + "record//files?recordId=&pageSize=0")},
    {"getRecordFiles", "withoutRecordId", R"({"pageSize":5})", refused},

    locked({"createRecordFile", "absent", absent, refused}, "l1"),
    locked({"createRecordFile", "fresh", "{}", refused}, "l1"),
    locked({"createRecordFile", "full", recordFile, post(plain + "record/r1/file", recordFile)}, "l1"),
    locked({"createRecordFile", "onlyRecordId", record,
            post(plain + "record/r1/file",
                 R"({"recordId":"r1","length":0,"uploadType":1,"autoRename":2,"hidden":false,"scene":""})")},
           "l1"),
    locked({"createRecordFile", "withoutRecordId", R"({"fileName":"n"})", refused}, "l1"),
    {"createRecordFile", "withoutLockId", recordFile, post(plain + "record/r1/file", recordFile)},
    locked({"createRecordFile", "emptyLockId", recordFile, post(plain + "record/r1/file", recordFile)}, ""),

    {"addScope", "absent", absent, refused},
    answered({"addScope", "fresh", "{}", post(plain + "device/0/scope", R"({"deviceId":0})")}, noneFailed),
    answered({"addScope", "full", scopes, post(plain + "device/7/scope", scopes)}, noneFailed),
    answered({"addScope", "emptyList", R"({"scopeList":[]})",
              post(plain + "device/0/scope", R"({"scopeList":[],"deviceId":0})")},
             noneFailed),

    {"deleteScope", "absent", absent, refused},
    answered(
        {"deleteScope", "fresh", "{}", del(plain + "device/0/scope", R"({"scopeIdList":[],"deviceId":0})")},
        noneDeleted),
    answered({"deleteScope", "full", scopeIds, del(plain + "device/7/scope", scopeIds)}, noneDeleted),

    {"getScope", "absent", absent, refused},
    answered({"getScope", "fresh", "{}", get(plain + "device/0/scope?moduleCode=")}, noScopes),
    answered({"getScope", "full", R"({"deviceId":7,"moduleCode":"100"})",
              get(plain + "device/7/scope?moduleCode=100")},
             noScopes),
    answered(
        {"getScope", "withoutModuleCode", R"({"deviceId":7})", get(plain + "device/7/scope?moduleCode=")},
        noScopes),

    {"listConfigInfos", "absent", absent, refused},
    answered({"listConfigInfos", "full", R"({"deviceId":"7","moduleCode":"101"})",
              get(plain + "device/7/configs?moduleCode=101")},
             noData),
    answered({"listConfigInfos", "empty", R"({"deviceId":"","moduleCode":""})",
              get(plain + "device//configs?moduleCode=")},
             noData),

    {"getConfigInfo", "absent", absent, refused},
    answered({"getConfigInfo", "full", R"({"deviceId":"7","moduleCode":"101","configName":"wifi"})",
              get(plain + "device/7/config?moduleCode=101&congigName=wifi")},
             noData),
    answered({"getConfigInfo", "empty", R"({"deviceId":"","moduleCode":"","configName":""})",
              get(plain + "device//config?moduleCode=&congigName=")},
             noData),

    {"addConfigInfo", "absent", absent, refused},
    {"addConfigInfo", "fresh", "{}", refused},
    answered({"addConfigInfo", "full", newValue, post(plain + "device/7/config", newValue)}, noData),
    answered({"addConfigInfo", "onlyDeviceId", R"({"deviceId":"7"})",
              post(plain + "device/7/config", R"({"deviceId":"7"})")},
             noData),
    {"addConfigInfo", "withoutDeviceId", R"({"moduleCode":"101","configName":"wifi"})", refused},
};

class BackUpOperation : public OperationTest {};

TEST_P(BackUpOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getBackupImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IBackUp, BackUpOperation, testing::ValuesIn(rows), nameOf);

TEST(IBackUp, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IBackUp>(),
                testing::ElementsAre(
                    "unbindDevice", "bindDevice", "getDevices", "createBackupLock", "keepBackupLock",
                    "deleteBackupLock", "backupComplete", "backupDelete", "backupGet", "createRecord",
                    "getRecords", "getRecordFiles", "createRecordFile", "addScope", "deleteScope", "getScope",
                    "listConfigInfos", "getConfigInfo", "addConfigInfo", "updateConfigInfo"));
}

TEST(IBackUp, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getBackupImpl(), &CloudInstance::shared().getBackupImpl());
}

// ---- the one that does nothing

class UpdateConfigInfo : public ServiceTest {};

TEST_F(UpdateConfigInfo, NeitherSendsNorKeepsItsCallback) {
    for (const auto& bean : {std::optional<UpdateConfigInfoBean>(), std::optional(UpdateConfigInfoBean{})}) {
        const auto heldByTheCallback = std::make_shared<bool>(false);
        CloudInstance::shared().getBackupImpl().updateConfigInfo(
            bean, [heldByTheCallback](const auto&) { *heldByTheCallback = true; });
        EXPECT_EQ(heldByTheCallback.use_count(), 1);  // gone, so it can never run
        EXPECT_FALSE(*heldByTheCallback);
    }
    EXPECT_EQ(sent(), refused);
}

TEST(UpdateConfigInfoRequest, HasAnAddressAndABody) {
    UpdateConfigInfoBean bean;
    bean.deviceId = "7";
    bean.moduleCode = "101";
    bean.configName = "wifi";
    bean.currentConfigValue = "on";
    bean.newConfigValue = "off";
    UpdateConfigInfoRequest request(HTTPMethod::post, bean, nullptr);
    EXPECT_EQ(request.buildParams(), 0);
    EXPECT_EQ(request.url, plain + "device/7/config");
    EXPECT_EQ(request.params, "");
    EXPECT_EQ(request.body,
              R"({"moduleCode":"101","configName":"wifi","currentConfigValue":"on","newConfigValue":"off",)"
              R"("deviceId":"7"})");
}

TEST(UpdateConfigInfoRequest, RefusesAnAbsentRecordAndOneWithoutADevice) {
    EXPECT_EQ(UpdateConfigInfoRequest(HTTPMethod::post, std::nullopt, nullptr).buildParams(), -1);
    EXPECT_EQ(UpdateConfigInfoRequest(HTTPMethod::post, UpdateConfigInfoBean{}, nullptr).buildParams(), -1);
}

// ---- what a caller must give

class IBackUpDeathTest : public testing::Test {
  protected:
    IBackUpDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    template <class Bean>
    static Bean record(std::string text) {
        Bean bean;
        EXPECT_FALSE(decode(text, bean));
        return bean;
    }

    IBackUp& backups_ = CloudInstance::shared().getBackupImpl();
};

TEST_F(IBackUpDeathTest, TheFilesOfARecordWithoutAPageSizeEndTheProcess) {
    EXPECT_DEATH(backups_.getRecordFiles(record<GetRecordFilesBean>(R"({"recordId":"r"})"), nullptr),
                 "pageSize is absent");
}

TEST_F(IBackUpDeathTest, AListOfValuesWithoutDeviceOrModuleEndsTheProcess) {
    EXPECT_DEATH(backups_.listConfigInfos(record<ListConfigInfoBean>(R"({"moduleCode":"101"})"), nullptr),
                 "deviceId is absent");
    EXPECT_DEATH(backups_.listConfigInfos(record<ListConfigInfoBean>(R"({"deviceId":"7"})"), nullptr),
                 "moduleCode is absent");
}

TEST_F(IBackUpDeathTest, AValueWithoutDeviceModuleOrNameEndsTheProcess) {
    EXPECT_DEATH(backups_.getConfigInfo(
                     record<GetConfigInfoBean>(R"({"moduleCode":"101","configName":"wifi"})"), nullptr),
                 "deviceId is absent");
    EXPECT_DEATH(
        backups_.getConfigInfo(record<GetConfigInfoBean>(R"({"deviceId":"7","configName":"wifi"})"), nullptr),
        "moduleCode is absent");
    EXPECT_DEATH(
        backups_.getConfigInfo(record<GetConfigInfoBean>(R"({"deviceId":"7","moduleCode":"101"})"), nullptr),
        "configName is absent");
}

// ---- records that have no JSON form

const std::string noText = "\xff";

class Unencodable : public ServiceTest {
  protected:
    void SetUp() override {
        ServiceTest::SetUp();
        test_support::recordingLog().clear();
    }

    template <class Response>
    void expectRefusal(const std::function<void(NetworkCallback<Response>)>& begin) {
        const auto failure = std::get<NetworkFailure>(awaitAnswer<Response>(begin).result);
        EXPECT_EQ(failure.message, "params build faild");
        EXPECT_EQ(sent(), refused);
    }
    static std::vector<std::string> takeLog() {
        auto lines = test_support::recordingLog().lines();
        test_support::recordingLog().clear();
        return lines;
    }

    IBackUp& backups_ = CloudInstance::shared().getBackupImpl();
};

TEST_F(Unencodable, ARecordIsRefusedWithALogLine) {
    const auto refusedWithALine = testing::ElementsAre(testing::StartsWith("JSON encoding failed: "));
    expectRefusal<DeviceResponse>(
        [&](auto callback) { backups_.bindDevice(BaseDeviceBean{.machineCode = noText}, callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
    expectRefusal<CreateBackupLockResponse>(
        [&](auto callback) { backups_.createBackupLock(CreateLockBean{.moduleCode = noText}, callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
    CreateRecordBean newOne;
    newOne.properties = noText;
    expectRefusal<RecordDetailResponse>(
        [&](auto callback) { backups_.createRecord(newOne, "l1", callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
    RecordFileBean file;
    file.recordId = "r1";
    file.fileName = noText;
    expectRefusal<FilesCreateResponse>(
        [&](auto callback) { backups_.createRecordFile(file, "l1", callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
    CompleteRecordBean result;
    result.recordId = "r1";
    result.properties = noText;
    expectRefusal<BaseResponse>([&](auto callback) { backups_.backupComplete(result, "l1", callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
    const BaseRecordBean id{.recordId = noText};
    expectRefusal<BaseResponse>([&](auto callback) { backups_.backupDelete(id, "l1", callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
}

TEST_F(Unencodable, ARecordIsRefusedAlsoWhereItIsNotSent) {
    const auto refusedWithALine = testing::ElementsAre(testing::StartsWith("JSON encoding failed: "));
    expectRefusal<RecordDetailResponse>(
        [&](auto callback) { backups_.backupGet(BaseRecordBean{.recordId = noText}, callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
    GetRecordFilesBean files;
    files.recordId = "r1";
    files.pageSize = 1;
    files.cursor = noText;
    expectRefusal<GetRecordFilesResponse>([&](auto callback) { backups_.getRecordFiles(files, callback); });
    EXPECT_THAT(takeLog(), refusedWithALine);
}

TEST_F(Unencodable, AScopeOrAValueIsRefusedInSilence) {
    AddScopeBean scope;
    scope.scopeList = {PathPair{.localPath = noText}};
    expectRefusal<AddScopeResponse>([&](auto callback) { backups_.addScope(scope, callback); });
    DeleteScopeBean ids;
    ids.moduleCode = noText;
    expectRefusal<DeleteScopeResponse>([&](auto callback) { backups_.deleteScope(ids, callback); });
    AddConfigInfoBean value;
    value.deviceId = "7";
    value.newConfigValue = noText;
    expectRefusal<AddConfigInfosResponse>([&](auto callback) { backups_.addConfigInfo(value, callback); });
    UpdateConfigInfoBean change;
    change.deviceId = "7";
    change.newConfigValue = noText;
    EXPECT_EQ(UpdateConfigInfoRequest(HTTPMethod::post, change, nullptr).buildParams(), -1);
    EXPECT_THAT(takeLog(), testing::IsEmpty());
}

// ---- answers

class BackUpAnswer : public ServiceTest {
  protected:
    IBackUp& backups_ = CloudInstance::shared().getBackupImpl();
};

TEST_F(BackUpAnswer, HoldsTheNewLock) {
    answer_ = R"({"data":{"lockId":"l1"},"code":0,"msg":"success"})";
    EXPECT_EQ(std::get<std::string>(callOperation(backups_, "createBackupLock", "{}").result), answer_);
}

TEST_F(BackUpAnswer, OfAScopeThatWasNotAddedIsASuccess) {
    answer_ =
        R"({"scopeList":[{"scopeId":"3","moduleCode":"100","createTime":"t","localPath":"/a"}],)"
        R"("failedScopeList":[{"errorCode":"1","msg":"m","localPath":"/b","targetFolderPath":"/c"}],"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(backups_, "addScope", scopes).result), answer_);
}

TEST_F(BackUpAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 409;
    answer_ = R"({"code":13000409,"msg":"another run holds the lock"})";
    const auto failure = std::get<NetworkFailure>(callOperation(backups_, "createBackupLock", "{}").result);
    EXPECT_EQ(failure.code, 13000409);
    EXPECT_EQ(failure.message, "another run holds the lock");
}

TEST_F(BackUpAnswer, OfARecordWithoutAStatusIsAFailureThatNamesThePlace) {
    answer_ = R"({"data":[{"recordId":"r1","version":1}]})";
    const auto failure = std::get<NetworkFailure>(callOperation(backups_, "getRecords", "{}").result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_THAT(failure.message, testing::StartsWith("str to bean error "));
    EXPECT_THAT(failure.message, testing::HasSubstr("data[0]"));
}

}  // namespace
}  // namespace baseapi::i_back_up
