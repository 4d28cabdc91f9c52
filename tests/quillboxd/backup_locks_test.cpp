#include "tests/quillboxd/backup_client.h"

namespace quillboxd_test {
namespace {

using BackupLocksTest = BackupTest;

TEST_F(BackupLocksTest, ALockLetsRecordsBeWritten) {
    EXPECT_EQ(client_.askForRecord(client_.takeLock()).status, 200);
}

TEST_F(BackupLocksTest, ALockNeedsItsModule) {
    expectRefused(client_.plain("POST", "lock", "{}"), 400, "moduleCode");
    expectRefused(client_.plain("POST", "lock", R"({"moduleCode":""})"), 400, "moduleCode");
    expectRefused(client_.plain("POST", "lock", R"({"moduleCode":102})"), 400, "must be a text");
    expectRefused(client_.plain("POST", "lock"), 400, "JSON");
}

TEST_F(BackupLocksTest, AModuleHasOneLock) {
    const auto lock = client_.takeLock();
    client_.addRecord(lock);
    expectRefused(client_.askForLock("102"), 409, "102 is locked");
    EXPECT_EQ(client_.askForRecord(lock).status, 200);
}

TEST_F(BackupLocksTest, AnotherSignInOfTheAccountIsRefusedAtOnce) {
    client_.takeLock();
    expectRefused(BackupClient(process_.url()).askForLock("102"), 409, "102 is locked");
}

TEST_F(BackupLocksTest, ALockThatNeverArrivedGivesWayToWhoTookIt) {
    const auto lost = client_.takeLock();
    const auto lock = client_.takeLock();
    EXPECT_NE(lock, lost);
    expectRefused(client_.askForRecord(lost), 403, "no lock of this id");
    EXPECT_EQ(client_.askForRecord(lock).status, 200);
}

TEST_F(BackupLocksTest, ModulesAndAccountsAreLockedEachByItself) {
    client_.takeLock("100");
    client_.takeLock("101");
    const BackupClient other(process_.url(), "other");
    const auto lock = other.takeLock("100");
    expectRefused(client_.plain("DELETE", "lock", "", lock), 403, "no lock of this id");
}

TEST_F(BackupLocksTest, ALockThatWasGivenBackIsFree) {
    const auto lock = client_.takeLock();
    EXPECT_EQ(client_.plain("DELETE", "lock", "", lock).status, 200);
    expectRefused(client_.askForRecord(lock), 403, "no lock of this id");
    EXPECT_NE(BackupClient(process_.url()).takeLock(), lock);
}

TEST_F(BackupLocksTest, AnUnknownOrMissingLockIsRefused) {
    client_.takeLock();
    for (const auto* id : {"", "0123456789abcdef"}) {
        expectRefused(client_.plain("DELETE", "lock", "", id), 403, "no lock of this id");
        expectRefused(client_.cloudFile("PATCH", "lock", "", id), 403, "no lock of this id");
        expectRefused(client_.askForRecord(id), 403, "no lock of this id");
    }
    expectRefused(client_.plain("DELETE", "lock"), 403, "x-backup-lock-id is missing");
    expectRefused(client_.cloudFile("PATCH", "lock"), 403, "x-backup-lock-id is missing");
    expectRefused(client_.askForRecord(std::nullopt), 403, "x-backup-lock-id is missing");
}

TEST_F(BackupLocksTest, TheLockOfAnotherModuleIsRefused) {
    expectRefused(client_.askForRecord(client_.takeLock("100"), "102"), 403, "not the one of the module 102");
}

TEST_F(BackupLocksTest, ALockThatHasExpiredIsRefusedAndFree) {
    const auto lock = client_.takeLock();
    const auto record = client_.addRecord(lock);
    expireLocks();
    expectRefused(client_.askForRecord(lock), 403, "expired");
    expectRefused(client_.finish(record, lock), 403, "expired");
    expectRefused(client_.cloudFile("PATCH", "lock", "", lock), 403, "expired");
    EXPECT_EQ(BackupClient(process_.url()).askForLock("102").status, 200);
}

TEST_F(BackupLocksTest, ALockThatHasExpiredCanBeGivenBack) {
    const auto lock = client_.takeLock();
    expireLocks();
    EXPECT_EQ(client_.plain("DELETE", "lock", "", lock).status, 200);
}

TEST_F(BackupLocksTest, ALockCanBeRenewed) {
    const auto lock = client_.takeLock();
    EXPECT_EQ(client_.cloudFile("PATCH", "lock", "", lock).status, 200);
    EXPECT_EQ(client_.askForRecord(lock).status, 200);
    expectRefused(client_.askForLock("102"), 409, "102 is locked");
}

TEST_F(BackupLocksTest, EachCallIsKnownUnderOnePrefixAlone) {
    const auto lock = client_.takeLock();
    expectRefused(client_.plain("PATCH", "lock", "", lock), 405, "PATCH");
    expectRefused(client_.cloudFile("DELETE", "lock", "", lock), 405, "DELETE");
    expectRefused(client_.cloudFile("POST", "record", "{}", lock), 405, "POST");
    expectRefused(client_.plain("GET", "device"), 404, "no endpoint");
}

}  // namespace
}  // namespace quillboxd_test
