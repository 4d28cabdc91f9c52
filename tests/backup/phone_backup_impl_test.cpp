#include "baseapi/backup/i_phone_backup.h"

#include <gmock/gmock.h>

#include "tests/backup/backup_fixture.h"

namespace baseapi {
namespace {

using test_support::Event;
using test_support::Exchange;
using testing::ElementsAre;
using testing::IsEmpty;

class PhoneBackupImplTest : public BackupServiceTest {
  protected:
    void SetUp() override {
        BackupServiceTest::SetUp();
        test_support::addressBook().reset();
        on(getScope, R"({"code":0,"scopeList":[]})");
    }
    static IPhoneBackup& backup() { return CloudInstance::shared().getPhoneBackupImpl(); }

    /// Holds the first call of each run until the test lets go.
    void holdStart() {
        on(releaseLock, [this](Exchange& exchange) {
            EXPECT_TRUE(exchange.waitFor(letGo_));
            exchange.answer(200, R"({"code":0})");
        });
    }

    Event letGo_;
    BackupEvents events_;
};

TEST_F(PhoneBackupImplTest, HandsOutTheManagerOfAModule) {
    EXPECT_NE(backup().getBackupManager("100"), nullptr);
    EXPECT_NE(backup().getBackupManager("101"), nullptr);
    EXPECT_NE(backup().getBackupManager("102"), nullptr);
    EXPECT_NE(backup().getBackupManager("100"), backup().getBackupManager("101"));
    EXPECT_EQ(backup().getBackupManager("100"), backup().getBackupManager("100"));
    EXPECT_EQ(backup().getBackupManager("103"), nullptr);
    EXPECT_EQ(backup().getBackupManager(""), nullptr);
}

TEST_F(PhoneBackupImplTest, BacksUpTheFoldersOfTheDevice) {
    EXPECT_TRUE(backup().backupDirs("ignored", 7, events_.callback()));
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 0 0 closed");
}

TEST_F(PhoneBackupImplTest, BacksUpTheAlbum) {
    EXPECT_TRUE(backup().backupAlbum("ignored", 7, events_.callback()));
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 0 0 closed");
}

TEST_F(PhoneBackupImplTest, TellsOfAMissingSlicerBeforeTheCallReturns) {
    CloudInstance::shared().sliceFile = std::shared_ptr<ISliceFile>();
    EXPECT_FALSE(backup().backupDirs("", 7, events_.callback()));
    EXPECT_FALSE(backup().backupAlbum("", 7, events_.callback()));
    EXPECT_THAT(events_.all(),
                ElementsAre("onComplete 0 0 100001 no slice file", "onComplete 0 0 100001 no slice file"));
}

TEST_F(PhoneBackupImplTest, ASecondBackupOfFoldersIsRefusedWithWords) {
    holdStart();
    BackupEvents second;
    EXPECT_TRUE(backup().backupDirs("", 7, events_.callback()));
    EXPECT_FALSE(backup().backupDirs("", 7, second.callback()));
    EXPECT_THAT(second.all(), ElementsAre("onComplete 0 0 100025 has task"));
    letGo_.set();
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 0 0 closed");
}

TEST_F(PhoneBackupImplTest, ASecondBackupOfTheAlbumIsRefusedWithoutWords) {
    holdStart();
    BackupEvents second;
    EXPECT_TRUE(backup().backupAlbum("", 7, events_.callback()));
    EXPECT_FALSE(backup().backupAlbum("", 7, second.callback()));
    EXPECT_THAT(second.all(), IsEmpty());
    letGo_.set();
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 0 0 closed");
}

TEST_F(PhoneBackupImplTest, ABackupWithoutPermissionStartsAndHasEnded) {
    test_support::photoLibrary().plan.status = 1;
    EXPECT_TRUE(backup().backupDirs("", 7, events_.callback()));
    EXPECT_THAT(events_.all(), ElementsAre("onComplete 0 0 100005 No file permission"));
    test_support::photoLibrary().plan.status = 3;
    EXPECT_TRUE(backup().backupDirs("", 7, events_.callback()));
    while (events_.completions().size() < 2) std::this_thread::yield();
}

TEST_F(PhoneBackupImplTest, CancelsTheRunOfAModule) {
    holdStart();
    backup().backupDirs("", 7, events_.callback());
    ASSERT_TRUE(waitFor(releaseLock));
    backup().getBackupManager("100")->cancel();
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 0 100009 User cancel");
    letGo_.set();
    ASSERT_TRUE(waitFor(closeRecord));
}

TEST_F(PhoneBackupImplTest, ACancelWithoutARunHasNoEffect) {
    for (const auto* module : {"100", "101", "102"}) backup().getBackupManager(module)->cancel();
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(PhoneBackupImplTest, OnlyOneBackupOfContactsRunsAtATime) {
    holdStart();
    TextEvents ends;
    const BackupResultHandler handler{
        [add = ends.writer()](const BackupContactResult& result) {
            result.visit([&](const BackupContactResult::success& it) { add(it.message); },
                         [&](const BackupContactResult::failure& it) { add(it.errorMessage); });
        },
        nullptr};
    EXPECT_TRUE(backup().backupContact("", 7, 0, handler));
    EXPECT_FALSE(backup().backupContact("", 7, 0, handler));
    ASSERT_TRUE(waitFor(releaseLock));
    backup().getBackupManager("102")->cancel();
    letGo_.set();
    EXPECT_EQ(ends.waitFor("User cancel", "closed"), "User cancel");
    EXPECT_EQ(ends.all().size(), 1U);
}

TEST_F(PhoneBackupImplTest, ARestoreNeedsARecord) {
    TextEvents ends;
    backup().restoreContact("hash", "", 0, [add = ends.writer()](const ContactResult& event) {
        event.visit([&](const ContactResult::onFailure& it) { add(it.hash + " " + it.message); },
                    [](const auto&) {});
    });
    EXPECT_THAT(ends.all(), ElementsAre("hash No record id"));
}

}  // namespace
}  // namespace baseapi
