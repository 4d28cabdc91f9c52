#include "baseapi/backup/dirs_upload_manager.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "tests/backup/backup_fixture.h"

namespace baseapi {
namespace {

namespace fs = std::filesystem;
using test_support::Event;
using test_support::Exchange;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DirsUploadManagerTest : public BackupServiceTest {
  protected:
    void SetUp() override {
        BackupServiceTest::SetUp();
        run_->deviceId = 7;
        run_->onCallback = events_.callback();
        fs::create_directory(root_);
        scopes(scope(root_.string(), "/backup"));
    }

    void scopes(const std::string& list) { on(getScope, R"({"code":0,"scopeList":[)" + list + "]}"); }
    static std::string scope(const std::string& local, const std::string& target) {
        return R"({"localPath":")" + local + R"(","targetFolderPath":")" + target + R"("})";
    }
    void file(const std::string& name) const { std::ofstream(root_ / name) << "content"; }
    std::string runToTheEnd() {
        run_->start();
        return events_.waitForComplete();
    }
    std::string lastProperties() const { return requestsOf(closeRecord).back().body; }

    const fs::path root_ = folder_ / "root";
    BackupEvents events_;
    std::shared_ptr<DirsUploadManager> run_ = std::make_shared<DirsUploadManager>();
};

TEST_F(DirsUploadManagerTest, CallsTheServiceInTheOrderOfTheSteps) {
    on(listRecords, R"({"code":0,"data":[{"recordId":"old","status":0,"version":1}]})");
    Preferences::shared().putString("backup_lock_id_100", "lock-0");
    file("one");
    EXPECT_EQ(runToTheEnd(), "onComplete 1 0 0 closed");
    ASSERT_TRUE(waitFor(releaseLock, 2));
    EXPECT_THAT(calls(), ElementsAre(releaseLock, takeLock,
                                     std::string(listRecords) + "?deviceId=7&moduleCode=100&pageSize=100",
                                     deleteRecord, createRecord, std::string(getScope) + "?moduleCode=100",
                                     createDirectory, createDirectory, createFile, closeRecord, releaseLock));
    EXPECT_EQ(requestsOf(releaseLock)[0].header("x-backup-lock-id"), "lock-0");
    EXPECT_EQ(requestsOf(releaseLock)[1].header("x-backup-lock-id"), "lock-1");
    EXPECT_EQ(requestsOf(takeLock)[0].body, R"({"moduleCode":"100"})");
    EXPECT_EQ(requestsOf(createRecord)[0].body, R"({"moduleCode":"100","deviceId":7})");
    EXPECT_EQ(requestsOf(createRecord)[0].header("x-backup-lock-id"), "lock-1");
    EXPECT_EQ(requestsOf(closeRecord)[0].header("x-backup-lock-id"), "lock-1");
    EXPECT_EQ(Preferences::shared().getString("backup_lock_id_100", ""), "lock-1");
    EXPECT_TRUE(logged("DirsUploadManager createBackupLock success lockId = lock-1"));
}

TEST_F(DirsUploadManagerTest, ClosesTheRecordWithItsCounts) {
    file("one");
    file("two");
    on(createFile, [](Exchange& exchange) {
        exchange.answer(200, exchange.request.body.find("\"two\"") != std::string::npos
                                 ? R"({"code":507,"msg":"full"})"
                                 : R"({"code":0,"msg":"ok","fileId":"f","rapidUpload":true,"exist":false})");
    });
    EXPECT_EQ(runToTheEnd(), "onComplete 1 1 0 closed");
    EXPECT_THAT(lastProperties(), HasSubstr(R"(\"backupCount\":1)"));
    EXPECT_THAT(lastProperties(), HasSubstr(R"(\"successCount\":1)"));
    EXPECT_THAT(lastProperties(), HasSubstr(R"(\"failedCount\":1)"));
    EXPECT_THAT(lastProperties(), HasSubstr(R"(\"errorCode\":0)"));
    EXPECT_TRUE(logged("DirsUploadManager onSuccess code = 0, msg=rapid success"));
    EXPECT_TRUE(logged("DirsUploadManager onFailure errCode = 100016, errMsg=file invaild"));
}

TEST_F(DirsUploadManagerTest, MirrorsTheFoldersFromTheTopDown) {
    fs::create_directories(root_ / "a" / "b");
    file("a/b/deep");
    EXPECT_EQ(runToTheEnd(), "onComplete 1 0 0 closed");
    std::vector<std::string> made;
    for (const auto& request : requestsOf(createDirectory)) made.push_back(request.body);
    ASSERT_EQ(made.size(), 4U);
    EXPECT_THAT(made[0],
                testing::AllOf(HasSubstr(R"("fileName":"backup")"), HasSubstr(R"("parentFolder":[""])")));
    EXPECT_EQ(made[1],
              R"({"fileName":"root","fileType":"10","parentFolder":["folder-1"],"containerId":"container",)"
              R"("renameMode":3,"hidden":false,"scene":""})");
    EXPECT_THAT(made[2],
                testing::AllOf(HasSubstr(R"("fileName":"a")"), HasSubstr(R"("parentFolder":["folder-2"])")));
    EXPECT_THAT(made[3],
                testing::AllOf(HasSubstr(R"("fileName":"b")"), HasSubstr(R"("parentFolder":["folder-3"])")));
    EXPECT_THAT(requestsOf(createFile)[0].body, HasSubstr(R"("parentFolder":["folder-4"])"));
    EXPECT_TRUE(logged("new folder cloudPath = /backup/root, name = a"));
    EXPECT_TRUE(logged("createSingleFolderSync failed, id is empty"));
}

TEST_F(DirsUploadManagerTest, ReusesAFolderThatExists) {
    file("one");
    on(createDirectory, R"({"code":13000405,"msg":"there","existFileId":"there-1"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 1 0 0 closed");
    EXPECT_THAT(requestsOf(createFile)[0].body, HasSubstr(R"("parentFolder":["there-1"])"));
}

TEST_F(DirsUploadManagerTest, TheFilesOfAFolderThatCannotBeMadeCountAsFailed) {
    file("one");
    on(createDirectory, [this](Exchange& exchange) {
        exchange.answer(200, requestsOf(createDirectory).size() == 1 ? R"({"code":0,"id":"folder-1"})"
                                                                     : R"({"code":5,"msg":"no"})");
    });
    EXPECT_EQ(runToTheEnd(), "onComplete 0 1 0 closed");
    EXPECT_THAT(requestsOf(createFile), IsEmpty());
}

TEST_F(DirsUploadManagerTest, TheFilesBelowATargetThatEndsInASlashFindNoFolder) {
    file("one");
    scopes(scope(root_.string(), "/backup/"));
    EXPECT_EQ(runToTheEnd(), "onComplete 0 1 0 closed");
}

TEST_F(DirsUploadManagerTest, WithoutScopesThereIsNothingToDo) {
    scopes("");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 closed");
    EXPECT_THAT(requestsOf(createDirectory), IsEmpty());
}

TEST_F(DirsUploadManagerTest, SkipsAScopeThatLacksAPath) {
    scopes(R"({"localPath":"/nowhere"},{"targetFolderPath":"/backup"},)" +
           scope("/nowhere/at/all", "/backup"));
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 closed");
    EXPECT_TRUE(logged("generateFileDetailBeans is not exist or folder : /nowhere/at/all"));
}

TEST_F(DirsUploadManagerTest, CountsAFileThatTwoScopesHold) {
    file("one");
    scopes(scope(root_.string(), "/backup") + "," + scope(root_.string(), "/backup"));
    EXPECT_EQ(runToTheEnd(), "onComplete 1 1 0 closed");
}

// ---- failures, in the order of the steps

TEST_F(DirsUploadManagerTest, WithoutPermissionTheRunHasEndedWhenTheStartReturns) {
    test_support::photoLibrary().plan.status = 2;
    run_->start();
    EXPECT_THAT(events_.all(), ElementsAre("onComplete 0 0 100005 No file permission"));
    EXPECT_TRUE(logged("DirsUploadManager no permission"));
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(DirsUploadManagerTest, LimitedPermissionIsEnough) {
    test_support::photoLibrary().plan.status = 4;
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 closed");
}

TEST_F(DirsUploadManagerTest, GoesOnWhateverTheReleaseOfAnOldLockSays) {
    on(releaseLock, R"({"code":9,"msg":"no such lock"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 closed");
}

TEST_F(DirsUploadManagerTest, FailsWhereTheLockCannotBeTaken) {
    on(takeLock, R"({"code":33,"msg":"taken"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 33 taken");
    EXPECT_TRUE(logged("DirsUploadManager createBackupLock failure code = 33, msg = taken"));
    EXPECT_THAT(calls(), ElementsAre(releaseLock, takeLock));
}

TEST_F(DirsUploadManagerTest, FailsWhereTheLockAnswerDoesNotCome) {
    cut(takeLock);
    EXPECT_THAT(runToTheEnd(), testing::StartsWith("onComplete 0 0 -1 request error "));
}

TEST_F(DirsUploadManagerTest, FailsWhereTheLockAnswerHasNoCode) {
    on(takeLock, "{}");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100006 Lock id error");
}

TEST_F(DirsUploadManagerTest, FailsWithCodeZeroWhereTheLockAnswerHasNoData) {
    on(takeLock, R"({"code":0})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 Lock id error");
}

TEST_F(DirsUploadManagerTest, FailsWhereTheLockHasNoId) {
    on(takeLock, R"({"code":0,"data":{}})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100007 Lock id empty");
}

TEST_F(DirsUploadManagerTest, FailsWithTheServicesWordsWhereTheLockHasNoId) {
    on(takeLock, R"({"code":0,"msg":"hm","data":{}})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100007 hm");
    EXPECT_TRUE(logged("DirsUploadManager createBackupLock failure code = 0, msg = get lock id error, hm"));
}

TEST_F(DirsUploadManagerTest, GoesOnWhereOldRecordsCannotBeDeleted) {
    cut(listRecords);
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 closed");
}

TEST_F(DirsUploadManagerTest, FailsWhereTheRecordAnswerDoesNotCome) {
    cut(createRecord);
    EXPECT_THAT(runToTheEnd(), testing::StartsWith("onComplete 0 0 -1 request error "));
    EXPECT_TRUE(waitFor(releaseLock, 2));
    EXPECT_THAT(requestsOf(closeRecord), IsEmpty());
}

TEST_F(DirsUploadManagerTest, FailsWhereTheRecordIsRefused) {
    on(createRecord, R"({"code":44,"msg":"no"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 44 no");
    EXPECT_TRUE(test_support::recordingLog().waitFor(
        "DirsUploadManager createBackupRecord success code = 44, msg = no"));
    ASSERT_TRUE(waitFor(releaseLock, 2));
    EXPECT_EQ(requestsOf(releaseLock)[1].header("x-backup-lock-id"), "lock-1");
}

TEST_F(DirsUploadManagerTest, FailsWhereTheRecordAnswerHasNoCode) {
    on(createRecord, "{}");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100010 Create record error");
}

TEST_F(DirsUploadManagerTest, ClosesTheRecordWhereTheScopesAreRefused) {
    on(getScope, R"({"code":55,"msg":"off"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 55 off");
    EXPECT_TRUE(logged("DirsUploadManager getBackupScope failure code = 55, msg = off"));
    EXPECT_THAT(lastProperties(), HasSubstr(R"(\"errorCode\":55)"));
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(DirsUploadManagerTest, ClosesTheRecordWhereTheScopesHaveNoCode) {
    on(getScope, "{}");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100018 scope switch error");
}

TEST_F(DirsUploadManagerTest, ClosesTheRecordWhereTheScopesDoNotCome) {
    cut(getScope);
    EXPECT_THAT(runToTheEnd(), testing::StartsWith("onComplete 0 0 -1 request error "));
    EXPECT_EQ(requestsOf(closeRecord).size(), 1U);
}

TEST_F(DirsUploadManagerTest, TellsThatTheRecordCouldNotBeClosed) {
    on(closeRecord, R"({"code":66,"msg":"gone"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 66 gone");
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(DirsUploadManagerTest, TellsThatTheClosingHadNoAnswer) {
    cut(closeRecord);
    EXPECT_THAT(runToTheEnd(), testing::StartsWith("onComplete 0 0 -1 request error "));
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(DirsUploadManagerTest, TellsOfAClosingWithoutCode) {
    on(closeRecord, R"({"msg":"odd"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100017 odd");
}

TEST_F(DirsUploadManagerTest, AClosingWithoutWordsSaysThatItFailedAndMeansThatItDidNot) {
    on(closeRecord, R"({"code":0})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 Complete failed");
}

// ---- cancel

TEST_F(DirsUploadManagerTest, ACancelBeforeTheRecordReleasesTheRememberedLock) {
    Preferences::shared().putString("backup_lock_id_100", "lock-0");
    Event cancelled;
    on(takeLock, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(cancelled));
        exchange.answer(200, R"({"code":0,"data":{"lockId":"lock-1"}})");
    });
    run_->start();
    ASSERT_TRUE(waitFor(takeLock));
    run_->cancel();
    EXPECT_THAT(events_.all(), ElementsAre("onComplete 0 0 100009 User cancel"));
    ASSERT_TRUE(waitFor(releaseLock, 2));
    EXPECT_EQ(requestsOf(releaseLock)[1].header("x-backup-lock-id"), "lock-0");
    cancelled.set();
    // The run goes on to its next steps, and closes what it has opened.
    ASSERT_TRUE(waitFor(closeRecord));
    ASSERT_TRUE(waitFor(releaseLock, 3));
    EXPECT_THAT(requestsOf(closeRecord)[0].body, HasSubstr(R"(\"errorCode\":100009)"));
    EXPECT_EQ(requestsOf(releaseLock)[2].header("x-backup-lock-id"), "lock-1");
    EXPECT_THAT(events_.completions(), ElementsAre("onComplete 0 0 100009 User cancel"));
}

TEST_F(DirsUploadManagerTest, ACancelWhileFilesGoUpClosesTheRecordWithWhatIsDone) {
    for (int i = 0; i < 20; ++i) file("file-" + std::to_string(i));
    Event firstThere;
    Event cancelled;
    on(createFile, [&](Exchange& exchange) {
        firstThere.set();
        EXPECT_TRUE(exchange.waitFor(cancelled));
        exchange.answer(200, R"({"code":0,"msg":"ok","fileId":"f","rapidUpload":true,"exist":false})");
    });
    run_->start();
    ASSERT_TRUE(firstThere.wait());
    run_->cancel();
    cancelled.set();
    EXPECT_THAT(events_.waitForComplete(), testing::MatchesRegex("onComplete 0 [0-9]+ 100009 User cancel"));
    EXPECT_TRUE(waitFor(releaseLock, 2));
    EXPECT_LE(requestsOf(createFile).size(), 20U);
    run_->cancel();
    ASSERT_TRUE(waitFor(closeRecord, 2));
    EXPECT_EQ(events_.completions().size(), 1U);
}

TEST_F(DirsUploadManagerTest, LivesUntilItsEndAndNoLonger) {
    file("one");
    const std::weak_ptr<DirsUploadManager> watched = run_;
    Event held;
    on(getScope, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(held));
        exchange.answer(200, R"({"code":0,"scopeList":[)" + scope(root_.string(), "/backup") + "]}");
    });
    run_->start();
    run_.reset();
    ASSERT_TRUE(waitFor(getScope));
    EXPECT_FALSE(watched.expired());
    held.set();
    EXPECT_EQ(events_.waitForComplete(), "onComplete 1 0 0 closed");
    ASSERT_TRUE(waitFor(releaseLock, 2));
    const auto deadline = std::chrono::steady_clock::now() + test_support::kPatience;
    while (!watched.expired() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace baseapi
