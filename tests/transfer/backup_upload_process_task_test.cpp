#include "baseapi/transfer/backup_upload_process_task.h"

#include "baseapi/transfer/i_transfer.h"
#include "tests/transfer/upload_fixture.h"

namespace baseapi {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* backupFailed = "onFailure 100001 file invaild";
constexpr const char* createInRecord = "POST /quillbox/ose/v1/backup/record/record-1/file";

class BackupUploadProcessTaskTest : public UploadTest {
  protected:
    std::shared_ptr<Cancelable> upload(const URL& file) {
        return CloudInstance::shared().getTransferImpl().backupUploadFile(
            "folder-1", file, "", "record-1", "lock-1", 2, slicerOf(onePart), events_.callback());
    }

    UploadEvents events_;
};

TEST_F(BackupUploadProcessTaskTest, CreatesTheFileInTheRecordAndCompletesItLikeAnyOther) {
    BASEAPI_NEEDS_PARTS();
    on(createInRecord, 200, createdWithParts({3}));
    on("PUT /part/1", 200);
    upload(fileOf("abc", "book.vcf"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_THAT(calls(), ElementsAre(createInRecord, "PUT /part/1", complete));
    const auto requests = server_->requests();
    EXPECT_EQ(requests[0].header("x-backup-lock-id"), "lock-1");
    EXPECT_THAT(requests[0].body, HasSubstr(R"("recordId":"record-1")"));
    EXPECT_THAT(requests[0].body, HasSubstr(R"("parentFolder":["folder-1"])"));
    EXPECT_THAT(requests[0].body, HasSubstr(R"("autoRename":4)"));
    EXPECT_EQ(requests[2].body, R"({"fileId":"file-1","sha256":"whole-hash"})");
    EXPECT_EQ(requests[2].headerCount("x-backup-lock-id"), 0U);
}

TEST_F(BackupUploadProcessTaskTest, EndsAfterTheCreateStepWhereTheServiceHasTheContent) {
    on(createInRecord, 200, R"({"code":0,"msg":"ok","rapidUpload":true,"exist":false})");
    upload(fileOf("abc"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    EXPECT_THAT(calls(), ElementsAre(createInRecord));
}

TEST_F(BackupUploadProcessTaskTest, FailsWithACodeOfItsOwn) {
    on(createInRecord, 200, R"({"code":7,"msg":"no lock"})");
    upload(fileOf("abc"));
    EXPECT_EQ(events_.waitForLast(), backupFailed);
    EXPECT_TRUE(logged("file create failed:no lock"));
}

TEST_F(BackupUploadProcessTaskTest, FailsWhereItIsCancelledBeforeItsPartsGoUp) {
    Event cancelled;
    on(createInRecord, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(cancelled));
        exchange.answer(200, createdWithParts({3}));
    });
    const auto task = upload(fileOf("abc"));
    task->cancel();
    cancelled.set();
    EXPECT_EQ(events_.waitForLast(), backupFailed);
    EXPECT_TRUE(logged("uploadProcessTask cancel"));
    EXPECT_TRUE(logged("file hasCancel"));
}

TEST_F(BackupUploadProcessTaskTest, FailsAtOnceForWhatIsNoFile) {
    upload(URL("https://example.org/a"));
    EXPECT_EQ(events_.waitForLast(), backupFailed);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(BackupUploadProcessTaskTest, TakesTheRootWhereThereIsNoFolder) {
    on(createInRecord, 200, R"({"code":0,"msg":"ok","rapidUpload":true,"exist":false})");
    const auto task = std::make_shared<BackupUploadProcessTask>();
    task->file = fileOf("abc");
    task->defaultSliceFile = slicerOf(onePart);
    task->recordId = "record-1";
    task->lockId = "lock-1";
    task->onCallback = events_.callback();
    task->run();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    EXPECT_THAT(server_->requests().at(0).body, HasSubstr(R"("parentFolder":["root"])"));
    EXPECT_TRUE(logged("UploadProcessTask retain self " + std::to_string(task->timeStamp)));
}

TEST_F(BackupUploadProcessTaskTest, RefusesAFileWithoutARecord) {
    const auto task = std::make_shared<BackupUploadProcessTask>();
    task->file = fileOf("abc");
    task->defaultSliceFile = slicerOf(onePart);
    task->lockId = "lock-1";
    task->onCallback = events_.callback();
    task->run();
    EXPECT_EQ(events_.waitForLast(), backupFailed);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(logged("filesCreateRequest failure code = -1, msg = params build faild"));
}

TEST_F(BackupUploadProcessTaskTest, AnAbsentLockIsAProgrammingError) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto task = std::make_shared<BackupUploadProcessTask>();
    task->file = fileOf("abc");
    task->defaultSliceFile = slicerOf(onePart);
    task->recordId = "record-1";
    EXPECT_DEATH(task->run(), "no lock id");
}

}  // namespace
}  // namespace baseapi
