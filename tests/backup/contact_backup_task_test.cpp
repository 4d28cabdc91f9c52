#include "baseapi/backup/contact_backup_task.h"

#include <gmock/gmock.h>

#include <ctime>
#include <filesystem>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/backup/backup_fixture.h"

namespace baseapi {
namespace {

using test_support::Event;
using test_support::Exchange;
namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class ContactBackupTaskTest : public BackupServiceTest {
  protected:
    static constexpr const char* createInRecord = "POST /quillbox/ose/v1/backup/record/record-1/file";
    static constexpr const char* complete = "POST /quillbox/ose/v1/files/complete";

    void SetUp() override {
        BackupServiceTest::SetUp();
        test_support::addressBook().reset();
        on(createInRecord, R"({"code":0,"msg":"ok","fileId":"f","rapidUpload":true,"exist":false})");
        on(keepLock, R"({"code":0})");
        on(complete, R"({"code":0})");
        task_->deviceId = 7;
        const auto add = ends_.writer();
        task_->onCallback = {[add](const BackupContactResult& result) { add(textOf(result)); },
                             [add](const BackupProgress& it) {
                                 add("onProgress \"" + it.hash + "\" " + std::to_string(it.percent));
                             }};
    }

    static std::string textOf(const BackupContactResult& result) {
        return result.visit(
            [](const BackupContactResult::success& it) {
                return "success " + std::to_string(it.code) + " " + it.message;
            },
            [](const BackupContactResult::failure& it) {
                return "failure " + std::to_string(it.errorCode) + " " + it.errorMessage;
            });
    }
    static void contact(const std::string& name, const std::string& number) {
        AddressBookContact contact;
        contact.familyName = name;
        contact.phoneNumbers = {{std::nullopt, {number}}};
        test_support::addressBook().put(contact);
    }
    std::string runToTheEnd() {
        task_->start();
        return ends_.waitFor("success", "failure");
    }
    std::string properties() const { return requestsOf(closeRecord).back().body; }

    /// Answers as always, but only when the test lets go.
    void hold(const std::string& route, const std::string& body, Event& letGo) {
        on(route, [&letGo, body](Exchange& exchange) {
            EXPECT_TRUE(exchange.waitFor(letGo));
            exchange.answer(200, body);
        });
    }

    /// The service asks for one part of 20 bytes.
    void sendAPart() {
        on(createInRecord, [this](Exchange& exchange) {
            exchange.answer(
                200, R"({"code":0,"msg":"ok","fileId":"f","rapidUpload":false,"exist":false,"multiParts":[)"
                     R"({"partNumber":1,"partSize":20,"partOffset":0,"uploadUrl":")" +
                         server_.url("/part") + "\"}]}");
        });
        on("PUT /part", "");
    }

    TextEvents ends_;
    std::shared_ptr<ContactBackupTask> task_ = std::make_shared<ContactBackupTask>();
};

TEST_F(ContactBackupTaskTest, CallsTheServiceInTheOrderOfTheSteps) {
    BASEAPI_NEEDS_PARTS();
    contact("李", "138");
    Preferences::shared().putString("backup_lock_id_102", "lock-0");
    on(listRecords, R"({"code":0,"data":[{"recordId":"old","status":0,"version":1}]})");
    sendAPart();
    EXPECT_EQ(runToTheEnd(), "success 0 closed");
    ASSERT_TRUE(waitFor(releaseLock, 2));
    ASSERT_TRUE(waitFor(keepLock, 1));
    auto made = calls();
    EXPECT_EQ(std::erase(made, keepLock), 1U);
    EXPECT_THAT(made, ElementsAre(releaseLock, takeLock,
                                  std::string(listRecords) + "?deviceId=7&moduleCode=102&pageSize=100",
                                  deleteRecord, createRecord, createDirectory, createDirectory,
                                  createInRecord, "PUT /part", complete, closeRecord, releaseLock));
    EXPECT_EQ(requestsOf(releaseLock)[0].header("x-backup-lock-id"), "lock-0");
    EXPECT_EQ(requestsOf(releaseLock)[1].header("x-backup-lock-id"), "lock-1");
    EXPECT_EQ(requestsOf(keepLock)[0].header("x-backup-lock-id"), "lock-1");
    EXPECT_THAT(requestsOf(createDirectory)[0].body, HasSubstr(R"("fileName":"quillbox_backup")"));
    EXPECT_THAT(requestsOf(createDirectory)[1].body, HasSubstr(R"("fileName":"102")"));
    const auto created = requestsOf(createInRecord)[0];
    EXPECT_THAT(created.body,
                AllOf(HasSubstr(R"("recordId":"record-1")"), HasSubstr(R"("parentFolder":["folder-2"])"),
                      HasSubstr("backup_contact_"), HasSubstr(".vcf")));
    EXPECT_EQ(created.header("x-backup-lock-id"), "lock-1");
    EXPECT_TRUE(test_support::recordingLog().waitFor("keepLock result"));
}

TEST_F(ContactBackupTaskTest, TellsTheProgressOfTheFile) {
    BASEAPI_NEEDS_PARTS();
    contact("李", "138");
    sendAPart();
    EXPECT_EQ(runToTheEnd(), "success 0 closed");
    // 20 of 76 bytes.
    EXPECT_THAT(ends_.all(), ElementsAre("onProgress \"\" 26", "success 0 closed"));
    EXPECT_TRUE(logged("BackupUploadProcessTask progress: 20 / 76 (26.32%)"));
}

TEST_F(ContactBackupTaskTest, ClosesTheRecordWithTheNumberOfContacts) {
    contact("李", "138");
    contact("王", "139");
    EXPECT_EQ(runToTheEnd(), "success 0 closed");
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":2)"), HasSubstr(R"(\"successCount\":2)"),
                                    HasSubstr(R"(\"failedCount\":0)"), HasSubstr(R"(\"errorCode\":0)")));
}

TEST_F(ContactBackupTaskTest, AnEmptyAddressBookGoesUpAsAnEmptyFile) {
    EXPECT_EQ(runToTheEnd(), "success 0 closed");
    EXPECT_THAT(requestsOf(createInRecord)[0].body, HasSubstr(R"("length":0)"));
    EXPECT_THAT(properties(), HasSubstr(R"(\"backupCount\":0)"));
}

TEST_F(ContactBackupTaskTest, WithoutPermissionNothingIsSent) {
    test_support::addressBook().plan.status = AddressBook::AuthorizationStatus::denied;
    task_->start();
    EXPECT_THAT(ends_.all(), ElementsAre("failure 100003 No permission"));
    EXPECT_EQ(server_.requestCount(), 0U);
}

// ---- failures, in the order of the steps

TEST_F(ContactBackupTaskTest, FailsWhereTheLockAnswerDoesNotCome) {
    cut(takeLock);
    EXPECT_THAT(runToTheEnd(), StartsWith("failure -1 request error "));
    EXPECT_EQ(requestsOf(releaseLock).size(), 1U);
}

TEST_F(ContactBackupTaskTest, FailsWithCodeZeroWhereTheLockAnswerHasNoData) {
    on(takeLock, R"({"code":0})");
    EXPECT_EQ(runToTheEnd(), "failure 0 Lock id error");
    EXPECT_TRUE(logged("ContactBackupTask contact backup executeResult errCode = 0, errMsg = Lock id error"));
    EXPECT_TRUE(test_support::recordingLog().waitFor("ContactBackupTask deleteBackupLock lockId = "));
    EXPECT_EQ(requestsOf(releaseLock).size(), 1U);
}

TEST_F(ContactBackupTaskTest, FailsWhereTheLockAnswerHasNoCode) {
    on(takeLock, "{}");
    EXPECT_EQ(runToTheEnd(), "failure 100006 Lock id error");
}

TEST_F(ContactBackupTaskTest, FailsWhereTheLockHasNoId) {
    on(takeLock, R"({"code":0,"data":{}})");
    EXPECT_EQ(runToTheEnd(), "failure 100007 Lock id empty");
}

TEST_F(ContactBackupTaskTest, FailsWhereTheRecordIsRefusedAndGivesTheLockBack) {
    on(createRecord, R"({"code":44,"msg":"no"})");
    EXPECT_EQ(runToTheEnd(), "failure 44 no");
    EXPECT_TRUE(test_support::recordingLog().waitFor(
        "ContactBackupTask createBackupRecord success code = 44, msg = no"));
    EXPECT_TRUE(test_support::recordingLog().waitFor(R"(deleteBackupLock success resp = {"code":0})"));
    EXPECT_EQ(requestsOf(releaseLock)[1].header("x-backup-lock-id"), "lock-1");
}

TEST_F(ContactBackupTaskTest, FailsWhereTheRecordAnswerDoesNotCome) {
    cut(createRecord);
    EXPECT_THAT(runToTheEnd(), StartsWith("failure -1 request error "));
    EXPECT_TRUE(test_support::recordingLog().containsBeginning(
        "ContactBackupTask createBackupRecord failure code = -1, msg = request error "));
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(ContactBackupTaskTest, LogsWhereTheLockIsNotGivenBack) {
    on(createRecord, R"({"code":44,"msg":"no"})");
    on(releaseLock, R"({"code":9,"msg":"gone"})", 403);
    EXPECT_EQ(runToTheEnd(), "failure 44 no");
    EXPECT_TRUE(test_support::recordingLog().waitFor("ContactBackupTask deleteBackupLock lockId = lock-1"));
    EXPECT_TRUE(test_support::recordingLog().waitFor("deleteBackupLock failure code = 9, msg = gone"));
}

TEST_F(ContactBackupTaskTest, FailsWhereTheRecordAnswerHasNoCode) {
    on(createRecord, "{}");
    EXPECT_EQ(runToTheEnd(), "failure 100010 Create record error");
}

TEST_F(ContactBackupTaskTest, FailsWhereTheFileCannotBeWritten) {
    contact("李", "138");
    // Folders stand in the place of the file, whichever second it is named by.
    std::vector<fs::path> taken;
    const auto now = std::time(nullptr);
    for (auto second = now; second < now + 300; ++second) {
        std::ostringstream name;
        name << std::put_time(std::localtime(&second), "backup_contact_%Y%m%d_%H%M%S.vcf");
        taken.push_back(test_support::temporaryFolder() / name.str());
        fs::remove(taken.back());
        fs::create_directory(taken.back());
    }
    EXPECT_EQ(runToTheEnd(), "failure 100008 Generate vcf failed");
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":1)"), HasSubstr(R"(\"errorCode\":100008)")));
    EXPECT_THAT(requestsOf(createDirectory), IsEmpty());
    EXPECT_TRUE(waitFor(releaseLock, 2));
    for (const auto& folder : taken) fs::remove(folder);
}

TEST_F(ContactBackupTaskTest, FailsWhereTheFolderCannotBeMade) {
    contact("李", "138");
    on(createDirectory, R"({"code":5,"msg":"no"})");
    EXPECT_EQ(runToTheEnd(), "failure 100024 folders create error");
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":1)"), HasSubstr(R"(\"errorCode\":100024)")));
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(ContactBackupTaskTest, FailsWhereTheFolderIsNotMadeInTime) {
    contact("李", "138");
    hold(createDirectory, R"({"code":0,"id":"late"})", late_);
    task_->start();
    ASSERT_TRUE(waitFor(createDirectory));
    ASSERT_TRUE(test_support::testWaitClock().awaitWaiting());
    test_support::testWaitClock().expire();
    EXPECT_EQ(ends_.waitFor("success", "failure"), "failure 100024 folders create error");
    EXPECT_TRUE(logged("get cloudPath overTime"));
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":1)"), HasSubstr(R"(\"errorCode\":100024)")));
    late_.set();
}

TEST_F(ContactBackupTaskTest, FailsWhereTheUploadFailsWhateverTheClosingSays) {
    on(createInRecord, R"({"code":507,"msg":"full"})");
    EXPECT_EQ(runToTheEnd(), "failure 100001 file invaild");
    EXPECT_TRUE(logged("BackupUploadProcessTask sub onFailure 100001 + file invaild"));
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(ContactBackupTaskTest, FailsWhereTheClosingHasNoAnswerAndGivesTheLockBack) {
    cut(closeRecord);
    EXPECT_THAT(runToTheEnd(), StartsWith("failure -1 request error "));
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(ContactBackupTaskTest, ARefusedClosingIsAFailureThoughItsCodeIsZero) {
    on(closeRecord, R"({"code":0,"msg":"odd"})", 500);
    EXPECT_EQ(runToTheEnd(), "failure 0 odd");
}

TEST_F(ContactBackupTaskTest, FailsWhereTheClosingIsRefused) {
    on(closeRecord, R"({"msg":"odd"})");
    EXPECT_EQ(runToTheEnd(), "failure 100017 odd");
}

// ---- cancel

TEST_F(ContactBackupTaskTest, ACancelBeforeTheStartSendsNothing) {
    task_->setCancelled(true);
    EXPECT_EQ(runToTheEnd(), "failure 100009 User cancel");
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(ContactBackupTaskTest, ACancelWhileTheFolderIsMadeClosesTheRecord) {
    contact("李", "138");
    Event letGo;
    hold(createDirectory, R"({"code":0,"id":"folder-1"})", letGo);
    task_->start();
    ASSERT_TRUE(waitFor(createDirectory));
    task_->setCancelled(true);
    letGo.set();
    EXPECT_EQ(ends_.waitFor("success", "failure"), "failure 100009 User cancel");
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":0)"), HasSubstr(R"(\"errorCode\":100009)")));
    EXPECT_THAT(requestsOf(createInRecord), IsEmpty());
}

TEST_F(ContactBackupTaskTest, ACancelBeforeTheLockSendsNothingMoreAndRemembersTheLock) {
    Event letGo;
    hold(takeLock, R"({"code":0,"data":{"lockId":"lock-1"}})", letGo);
    task_->start();
    ASSERT_TRUE(waitFor(takeLock));
    task_->setCancelled(true);
    letGo.set();
    EXPECT_EQ(ends_.waitFor("success", "failure"), "failure 100009 User cancel");
    EXPECT_THAT(calls(), ElementsAre(releaseLock, takeLock));
    // So that the next run gives it back.
    EXPECT_EQ(Preferences::shared().getString("backup_lock_id_102", ""), "lock-1");
}

TEST_F(ContactBackupTaskTest, ACancelBeforeTheRecordGivesTheLockBack) {
    Event letGo;
    hold(listRecords, R"({"code":0,"data":[]})", letGo);
    task_->start();
    ASSERT_TRUE(waitFor(listRecords));
    task_->setCancelled(true);
    letGo.set();
    EXPECT_EQ(ends_.waitFor("success", "failure"), "failure 100009 User cancel");
    ASSERT_TRUE(waitFor(releaseLock, 2));
    EXPECT_THAT(requestsOf(createRecord), IsEmpty());
}

TEST_F(ContactBackupTaskTest, ACancelAfterTheRecordClosesIt) {
    contact("李", "138");
    Event letGo;
    hold(createRecord, R"({"code":0,"data":{"recordId":"record-1","status":0,"version":1}})", letGo);
    task_->start();
    ASSERT_TRUE(waitFor(createRecord));
    task_->setCancelled(true);
    letGo.set();
    EXPECT_EQ(ends_.waitFor("success", "failure"), "failure 100009 User cancel");
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":0)"), HasSubstr(R"(\"errorCode\":100009)")));
    EXPECT_TRUE(waitFor(releaseLock, 2));
    EXPECT_THAT(requestsOf(createDirectory), IsEmpty());
}

TEST_F(ContactBackupTaskTest, ACancelInTheUploadIsSeenAtItsNextEvent) {
    contact("李", "138");
    Event letGo;
    hold(createInRecord, R"({"code":0,"msg":"ok","fileId":"f","rapidUpload":true,"exist":false})", letGo);
    task_->start();
    ASSERT_TRUE(waitFor(createInRecord));
    task_->setCancelled(true);
    letGo.set();
    EXPECT_EQ(ends_.waitFor("success", "failure"), "failure 100009 User cancel");
    EXPECT_THAT(properties(), AllOf(HasSubstr(R"(\"backupCount\":0)"), HasSubstr(R"(\"errorCode\":100009)")));
}

TEST_F(ContactBackupTaskTest, SetCancelledWithFalseHasNoEffect) {
    task_->setCancelled(false);
    EXPECT_EQ(runToTheEnd(), "success 0 closed");
}

}  // namespace
}  // namespace baseapi
