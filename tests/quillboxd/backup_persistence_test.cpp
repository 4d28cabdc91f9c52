#include "tests/quillboxd/backup_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;

class BackupPersistenceTest : public testing::Test {
  protected:
    void killAndStart() {
        process_.kill();
        process_.start();
    }

    QuillboxdProcess process_;
    BackupClient client_{process_.url()};
};

TEST_F(BackupPersistenceTest, WhatWasAcknowledgedIsThereAfterAKill) {
    client_.cloudFile("POST", "device", R"({"machineCode":"m"})");
    client_.plain("POST", "device/7/scope",
                  R"({"moduleCode":"100","scopeList":[{"localPath":"/a","targetFolderPath":"/b"}]})");
    client_.plain("POST", "device/7/config",
                  R"({"moduleCode":"101","configName":"wifi","newConfigValue":"on"})");
    const auto lock = client_.takeLock();
    const auto record = client_.addRecord(lock);
    killAndStart();
    EXPECT_THAT(column(client_.cloudFile("GET", "device"), "data", "machineCode"), ElementsAre("m"));
    EXPECT_THAT(column(client_.plain("GET", "device/7/scope?moduleCode=100"), "scopeList", "localPath"),
                ElementsAre("/a"));
    EXPECT_THAT(column(client_.plain("GET", "device/7/configs?moduleCode=101"), "data", "config_value"),
                ElementsAre("on"));
    expectRefused(client_.askForLock("102"), 409, "locked");
    EXPECT_EQ(client_.finish(record, lock).status, 200);
    killAndStart();
    EXPECT_EQ(client_.record(record).at("status").as_int64(), 1);
}

TEST_F(BackupPersistenceTest, AResetForgetsAll) {
    client_.addRecord(client_.takeLock());
    client_.cloudFile("POST", "device", R"({"machineCode":"m"})");
    EXPECT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
    const BackupClient again(process_.url());
    EXPECT_THAT(again.recordIds("deviceId=0&moduleCode=&pageSize=1"), testing::IsEmpty());
    EXPECT_THAT(column(again.cloudFile("GET", "device"), "data", "machineCode"), testing::IsEmpty());
    again.takeLock();
}

}  // namespace
}  // namespace quillboxd_test
