// The commands about backups for people, and the calls of a backup one after the other.

#include "tests/cli/cloud_test.h"

namespace quillbox_test::backup_people {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string done = R"({"event":"success","record":{"code":0,"msg":"success"}})";

class BackupPeopleTest : public CloudTest {
  protected:
    Outcome call(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "call");
        return json(std::move(arguments));
    }
};

TEST_F(BackupPeopleTest, AFolderBecomesAScopeAndGoesAgain) {
    const auto added = json({"scope-add", "notes/./", "/backup/notes", "--device-id", "7"});
    EXPECT_EQ(added.status, 0) << added.error;
    const auto id = valueOf(added.output, "scopeId");
    EXPECT_EQ(valueOf(added.output, "localPath"), (home_ / "notes/").string());
    EXPECT_EQ(json({"scopes", "--device-id", "7"}).lines, added.lines);
    EXPECT_EQ(text({"scopes", "--device-id", "7"}).output,
              id + "  " + (home_ / "notes/").string() + "  ->  /backup/notes\n");
    EXPECT_THAT(json({"scopes", "--device-id", "7", "--module", "101"}).lines, IsEmpty());
    EXPECT_THAT(json({"scope-remove", id, "--device-id", "7"}).lines,
                ElementsAre(R"({"event":"success","scopeId":)" + id + "}"));
    EXPECT_THAT(json({"scopes", "--device-id", "7"}).lines, IsEmpty());
}

TEST_F(BackupPeopleTest, AScopeThatIsRefusedIsAFailureThatSaysWhy) {
    EXPECT_EQ(json({"scope-add", "a", "/b", "--device-id", "7"}).status, 0);
    const auto again = text({"scope-add", "a", "/b", "--device-id", "7"});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.error, HasSubstr("already"));
    const auto unknown = text({"scope-remove", "999", "--device-id", "7"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_THAT(unknown.error, HasSubstr("no scope"));
}

TEST_F(BackupPeopleTest, ACommandLineWithoutDeviceOrScopeCannotBeUsed) {
    EXPECT_THAT(text({"scopes"}).error, HasSubstr("--device-id"));
    EXPECT_EQ(text({"scopes"}).status, 2);
    EXPECT_EQ(text({"scope-add", "a", "/b"}).status, 2);
    EXPECT_EQ(text({"scope-remove", "--device-id", "7"}).status, 2);
    EXPECT_EQ(text({"scope-remove", "x", "--device-id", "7"}).status, 2);
}

TEST_F(BackupPeopleTest, DevicesAreListed) {
    EXPECT_THAT(json({"devices"}).lines, IsEmpty());
    EXPECT_EQ(call({"bindDevice", R"({"machineCode":"m","deviceName":"phone","deviceOS":"os"})"}).status, 0);
    EXPECT_THAT(json({"devices"}).lines, ElementsAre(HasSubstr(R"("machineCode":"m","deviceName":"phone")")));
    EXPECT_THAT(text({"devices"}).output, HasSubstr("  phone  os  since 2"));
}

TEST_F(BackupPeopleTest, TheCallsOfABackupFollowEachOther) {
    const auto lock = valueOf(call({"createBackupLock", R"({"moduleCode":"102"})"}).output, "lockId");
    const auto created = call({"createRecord", R"({"moduleCode":"102","deviceId":7})", "--lock-id", lock});
    const auto record = valueOf(created.output, "recordId");
    EXPECT_THAT(text({"records"}).output, HasSubstr(record + "  102  open "));
    EXPECT_EQ(call({"keepBackupLock", "--lock-id", lock}).lines, std::vector{done});
    const auto named = R"({"recordId":")" + record + "\"";
    const auto file = call({"createRecordFile",
                            named + R"(,"fileName":"empty","length":0,"uploadMode":"multipart","sha256":)" +
                                R"("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"})",
                            "--lock-id", lock});
    EXPECT_EQ(file.status, 0) << file.output;
    EXPECT_EQ(call({"fileComplete",
                    R"({"fileId":")" + valueOf(file.output, "fileId") +
                        R"(","sha256":"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"})"})
                  .lines,
              std::vector{done});
    EXPECT_THAT(call({"getRecordFiles", named + R"(,"pageSize":10})"}).output,
                HasSubstr(R"("fileName":"empty")"));
    EXPECT_EQ(call({"backupComplete", named + R"(,"properties":"{}"})", "--lock-id", lock}).lines,
              std::vector{done});
    EXPECT_THAT(call({"backupGet", named + "}"}).output, HasSubstr(R"("status":1)"));
    EXPECT_THAT(json({"records", "--device-id", "7", "--module", "102"}).lines,
                ElementsAre(HasSubstr(R"("recordId":")" + record + R"(","moduleCode":"102","status":1)")));
    EXPECT_THAT(json({"records", "--device-id", "8"}).lines, IsEmpty());
    EXPECT_EQ(call({"backupDelete", named + "}", "--lock-id", lock}).lines, std::vector{done});
    EXPECT_THAT(json({"records"}).lines, IsEmpty());
    EXPECT_EQ(call({"deleteBackupLock", "--lock-id", lock}).lines, std::vector{done});
    EXPECT_EQ(call({"deleteBackupLock", "--lock-id", lock}).status, 1);
}

TEST_F(BackupPeopleTest, MoreRecordsThanAPageAreAllListed) {
    const auto lock = valueOf(call({"createBackupLock", R"({"moduleCode":"102"})"}).output, "lockId");
    for (int number = 0; number < 101; ++number) {
        const auto answer = quillboxd_test::send("POST", service_.url() + "/quillbox/ose/v1/backup/record",
                                                 {"Authorization: " + token(), "x-backup-lock-id: " + lock},
                                                 R"({"moduleCode":"102","deviceId":7})");
        ASSERT_EQ(answer.status, 200) << answer.body;
    }
    EXPECT_THAT(json({"records"}).lines, SizeIs(101));
}

TEST_F(BackupPeopleTest, ConfigurationIsSetAndRead) {
    const std::string place = R"({"deviceId":"7","moduleCode":"101")";
    EXPECT_EQ(call({"addConfigInfo", place + R"(,"configName":"wifi","newConfigValue":"on"})"}).status, 0);
    for (const auto& answer : {call({"getConfigInfo", place + R"(,"configName":"wifi"})"}),
                               call({"listConfigInfos", place + "}"})})
        EXPECT_THAT(answer.output, HasSubstr(R"("config_name":"wifi","config_value":"on")"));
}

}  // namespace
}  // namespace quillbox_test::backup_people
