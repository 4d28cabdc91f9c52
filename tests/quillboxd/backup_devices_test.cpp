#include "tests/quillboxd/backup_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class BackupDevicesTest : public BackupTest {
  protected:
    std::int64_t bind(const std::string& body) const {
        return BackupClient::dataOf(client_.cloudFile("POST", "device", body)).at("deviceId").as_int64();
    }
    HttpAnswer addScopes(const std::string& device, const std::string& list,
                         const std::string& module = "100") const {
        return client_.plain("POST", "device/" + device + "/scope",
                             R"({"moduleCode":")" + module + R"(","scopeList":)" + list + "}");
    }
    HttpAnswer scopes(const std::string& device, const std::string& module = "100") const {
        return client_.plain("GET", "device/" + device + "/scope?moduleCode=" + module);
    }
    HttpAnswer removeScopes(const std::string& device, const std::string& ids) const {
        return client_.plain("DELETE", "device/" + device + "/scope", R"({"scopeIdList":)" + ids + "}");
    }
    HttpAnswer setValue(const std::string& device, const std::string& name, const std::string& value) const {
        return client_.plain("POST", "device/" + device + "/config",
                             json::serialize(json::object{{"deviceId", device},
                                                          {"moduleCode", "101"},
                                                          {"configName", name},
                                                          {"newConfigValue", value}}));
    }
    HttpAnswer value(const std::string& device, const std::string& name) const {
        return client_.plain("GET", "device/" + device + "/config?moduleCode=101&congigName=" + name);
    }
    HttpAnswer values(const std::string& device) const {
        return client_.plain("GET", "device/" + device + "/configs?moduleCode=101");
    }
};

// ---- devices

TEST_F(BackupDevicesTest, ADeviceKeepsItsIdAndTakesNewNames) {
    const auto id = bind(R"({"machineCode":"m1","deviceName":"old"})");
    EXPECT_EQ(bind(R"({"machineCode":"m1","deviceName":"new","deviceOS":"os"})"), id);
    EXPECT_NE(bind(R"({"machineCode":"m2"})"), id);
    const auto list = client_.cloudFile("GET", "device");
    EXPECT_THAT(column(list, "data", "machineCode"), ElementsAre("m1", "m2"));
    const auto answer = list.object();
    const auto& first = answer.at("data").as_array().at(0).as_object();
    EXPECT_EQ(textOf(first, "deviceName"), "new");
    EXPECT_EQ(first.at("deviceId").as_int64(), id);
}

TEST_F(BackupDevicesTest, ADeviceNeedsItsMachineCode) {
    expectRefused(client_.cloudFile("POST", "device", "{}"), 400, "machineCode");
    expectRefused(client_.cloudFile("POST", "device", R"({"machineCode":1})"), 400, "must be a text");
}

TEST_F(BackupDevicesTest, ADeviceThatIsUnboundTakesItsScopesAndValuesWithIt) {
    const auto id = std::to_string(bind(R"({"machineCode":"m"})"));
    addScopes(id, R"([{"localPath":"/a","targetFolderPath":"/b"}])");
    setValue(id, "wifi", "on");
    EXPECT_EQ(client_.plain("DELETE", "device/" + id).status, 200);
    EXPECT_THAT(column(client_.cloudFile("GET", "device"), "data", "machineCode"), IsEmpty());
    EXPECT_THAT(column(scopes(id), "scopeList", "localPath"), IsEmpty());
    EXPECT_THAT(column(values(id), "data", "config_name"), IsEmpty());
    expectRefused(client_.plain("DELETE", "device/" + id), 404, "no device");
    EXPECT_NE(std::to_string(bind(R"({"machineCode":"m"})")), id);
}

TEST_F(BackupDevicesTest, AnotherAccountHasItsOwnDevices) {
    const auto id = bind(R"({"machineCode":"m"})");
    const BackupClient other(process_.url(), "other");
    expectRefused(other.plain("DELETE", "device/" + std::to_string(id)), 404, "no device");
    EXPECT_THAT(column(other.cloudFile("GET", "device"), "data", "machineCode"), IsEmpty());
    expectRefused(client_.plain("DELETE", "device/x"), 400, "device id");
}

// ---- scopes

TEST_F(BackupDevicesTest, ScopesAreKeptByDeviceAndModule) {
    const auto added = addScopes("7", R"([{"localPath":"/a","targetFolderPath":"/b"},)"
                                      R"({"localPath":"/c","targetFolderPath":"/d"}])");
    EXPECT_THAT(column(added, "scopeList", "localPath"), ElementsAre("/a", "/c"));
    addScopes("7", R"([{"localPath":"/e","targetFolderPath":"/f"}])", "101");
    EXPECT_THAT(column(scopes("7"), "scopeList", "targetFolderPath"), ElementsAre("/b", "/d"));
    EXPECT_THAT(column(scopes("7", ""), "scopeList", "moduleCode"), ElementsAre("100", "100", "101"));
    EXPECT_THAT(column(scopes("8"), "scopeList", "localPath"), IsEmpty());
}

TEST_F(BackupDevicesTest, AScopeThatIsRefusedStandsInTheAnswer) {
    const auto answer = addScopes("7", R"([{"localPath":"/a"},{"localPath":"/a","targetFolderPath":"/b"},)"
                                       R"({"localPath":"/a","targetFolderPath":"/c"}])");
    EXPECT_THAT(column(answer, "scopeList", "targetFolderPath"), ElementsAre("/b"));
    EXPECT_THAT(column(answer, "failedScopeList", "errorCode"), ElementsAre("13000400", "13000405"));
    EXPECT_THAT(column(answer, "failedScopeList", "msg"),
                ElementsAre(testing::HasSubstr("targetFolderPath"), testing::HasSubstr("already")));
}

TEST_F(BackupDevicesTest, EveryFieldOfAScopeHasItsType) {
    expectRefused(addScopes("7", R"([{"localPath":1}])"), 400, "scopeList[0].localPath");
    expectRefused(addScopes("7", "{}"), 400, "scopeList");
    expectRefused(addScopes("7", "[]", ""), 400, "moduleCode");
    expectRefused(client_.plain("POST", "device/7/scope", R"({"moduleCode":"100"})"), 400, "scopeList");
    expectRefused(client_.plain("POST", "device/7/scope", R"({"deviceId":8})"), 400, "deviceId");
    expectRefused(client_.plain("GET", "device/7/scope"), 400, "moduleCode");
    expectRefused(removeScopes("7", R"(["1"])"), 400, "list of integers");
    expectRefused(client_.plain("DELETE", "device/7/scope", "{}"), 400, "scopeIdList");
}

TEST_F(BackupDevicesTest, ScopesAreTakenAway) {
    const auto ids = column(addScopes("7", R"([{"localPath":"/a","targetFolderPath":"/b"},)"
                                           R"({"localPath":"/c","targetFolderPath":"/d"}])"),
                            "scopeList", "scopeId");
    expectRefused(removeScopes("8", "null"), 400, "scopeIdList");
    EXPECT_EQ(removeScopes("8", "[" + ids[0] + "]").object().at("failedScopeList").as_array().size(), 1U);
    const auto answer = removeScopes("7", "[" + ids[0] + ",999]").object();
    EXPECT_EQ(json::serialize(answer.at("scopeIdList")), "[" + ids[0] + "]");
    const auto& failed = answer.at("failedScopeList").as_array().at(0).as_object();
    EXPECT_EQ(failed.at("scopeId").as_int64(), 999);
    EXPECT_EQ(textOf(failed, "errorCode"), "13000404");
    EXPECT_THAT(column(scopes("7"), "scopeList", "localPath"), ElementsAre("/c"));
}

// ---- configuration

TEST_F(BackupDevicesTest, AValueIsKeptAndReplaced) {
    const auto answer = setValue("7", "wifi", "on").object();
    const auto& set = answer.at("data").as_array().at(0).as_object();
    EXPECT_EQ(json::serialize(set),
              R"({"device_id":"7","module_code":"101","config_name":"wifi","config_value":"on"})");
    setValue("7", "wifi", "off");
    setValue("7", "other", "");
    EXPECT_THAT(column(value("7", "wifi"), "data", "config_value"), ElementsAre("off"));
    EXPECT_THAT(column(values("7"), "data", "config_name"), UnorderedElementsAre("other", "wifi"));
    EXPECT_THAT(column(value("7", "missing"), "data", "config_value"), IsEmpty());
    EXPECT_THAT(column(values("8"), "data", "config_name"), IsEmpty());
}

TEST_F(BackupDevicesTest, AValueNeedsItsModuleAndName) {
    const auto set = [&](const char* body) { return client_.plain("POST", "device/7/config", body); };
    expectRefused(set(R"({"configName":"n"})"), 400, "moduleCode");
    expectRefused(set(R"({"moduleCode":"101"})"), 400, "configName");
    expectRefused(set(R"({"deviceId":7})"), 400, "deviceId");
    expectRefused(set(R"({"deviceId":"8"})"), 400, "deviceId");
    expectRefused(client_.plain("GET", "device/7/config?moduleCode=101&configName=n"), 400, "congigName");
    expectRefused(client_.plain("GET", "device/7/configs"), 400, "moduleCode");
}

}  // namespace
}  // namespace quillboxd_test
