#include "baseapi/backup/contact_recover_task.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>

#include "tests/backup/backup_fixture.h"

namespace baseapi {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class ContactRecoverTaskTest : public BackupServiceTest {
  protected:
    static constexpr const char* files = "GET /quillbox/ose/v1/backup/record/record-1/files";
    static constexpr const char* detail = "POST /quillbox/ose/v1/files/f/detail";
    static constexpr const char* card =
        "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nTEL;TYPE=CELL:138\r\nEND:VCARD\r\n";

    void SetUp() override {
        BackupServiceTest::SetUp();
        test_support::addressBook().reset();
        emptyTemporaryFolder();
        on(files, R"({"code":0,"data":[{"fileId":"f"},{"fileId":"second"}]})");
        on("GET /content", card);
        describe("book.vcf");
        task_->hash = "the-hash";
        task_->recordId = "record-1";
        task_->onCallback = [add = events_.writer()](const ContactResult& event) { add(textOf(event)); };
    }
    static void emptyTemporaryFolder() {
        for (const auto& entry : fs::directory_iterator(test_support::temporaryFolder()))
            fs::remove_all(entry);
    }

    void describe(const std::string& name) {
        details(R"("id":"f","fileName":")" + name +
                R"(","downloadLinks":[{"usage":"thumbnail","downloadLink":"x"},)" +
                R"({"downloadLink":"y"},{"usage":"content","downloadLink":")" + server_.url("/content") +
                "\"}]");
    }
    void details(const std::string& fields) { on(detail, R"({"code":0,)" + fields + "}"); }
    static std::string textOf(const ContactResult& event) {
        return event.visit(
            [](const ContactResult::onSuccess& it) {
                return "success " + it.hash + " " + std::to_string(it.code) + " " + it.message;
            },
            [](const ContactResult::onFailure& it) {
                return "failure " + it.hash + " " + std::to_string(it.code) + " " + it.message;
            },
            [](const ContactResult::onProgress& it) {
                return "progress " + it.hash + " " + std::to_string(it.percent);
            });
    }
    std::string runToTheEnd() {
        task_->startRecover();
        return events_.waitFor("success", "failure");
    }
    static std::vector<std::string> temporaryFiles() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(test_support::temporaryFolder()))
            names.push_back(entry.path().filename());
        return names;
    }

    TextEvents events_;
    std::shared_ptr<ContactRecoverTask> task_ = std::make_shared<ContactRecoverTask>();
};

TEST_F(ContactRecoverTaskTest, BringsTheContactsOfTheFirstFileBack) {
    EXPECT_EQ(runToTheEnd(), "success the-hash 0 success");
    ASSERT_EQ(test_support::addressBook().size(), 1U);
    EXPECT_EQ(test_support::addressBook().contacts()[0].familyName, "Doe");
    EXPECT_EQ(requestsOf(files)[0].target,
              "/quillbox/ose/v1/backup/record/record-1/files?recordId=record-1&pageSize=100");
    EXPECT_EQ(server_.requestCount(), 3U);
    EXPECT_THAT(temporaryFiles(), ElementsAre("book.vcf"));
}

TEST_F(ContactRecoverTaskTest, TellsTheProgressWithTheHash) {
    EXPECT_EQ(runToTheEnd(), "success the-hash 0 success");
    for (const auto& text : events_.all()) {
        if (!text.starts_with("progress")) continue;
        EXPECT_THAT(text, StartsWith("progress the-hash "));
    }
}

TEST_F(ContactRecoverTaskTest, AFileWithoutContactsIsASuccess) {
    on("GET /content", "nothing of the kind");
    EXPECT_EQ(runToTheEnd(), "success the-hash 0 success");
    EXPECT_EQ(test_support::addressBook().size(), 0U);
}

TEST_F(ContactRecoverTaskTest, WithoutPermissionNothingIsSent) {
    test_support::addressBook().plan.status = AddressBook::AuthorizationStatus::denied;
    task_->startRecover();
    EXPECT_THAT(events_.all(), ElementsAre("failure the-hash 100003 No contact permission"));
    EXPECT_TRUE(logged("ContactRecoverTask no contact permission"));
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(ContactRecoverTaskTest, WithoutARecordIdNothingIsSent) {
    task_->recordId = "";
    task_->startRecover();
    EXPECT_THAT(events_.all(), ElementsAre("failure the-hash 100001 No record id"));
    EXPECT_TRUE(logged("ContactRecoverTask no recordId"));
}

TEST_F(ContactRecoverTaskTest, HandsTheFailureOfTheFilesOver) {
    cut(files);
    EXPECT_THAT(runToTheEnd(), StartsWith("failure the-hash -1 request error "));
    EXPECT_TRUE(logged("ContactRecoverTask getRecordFile failed"));
}

TEST_F(ContactRecoverTaskTest, FailsWhereTheRecordIsRefusedOrEmpty) {
    for (const auto* answer :
         {R"({"code":5,"msg":"no"})", R"({"code":0})", R"({"code":0,"data":[]})", "{}"}) {
        TextEvents events;
        on(files, answer);
        const auto task = std::make_shared<ContactRecoverTask>();
        task->recordId = "record-1";
        task->onCallback = [add = events.writer()](const ContactResult& event) { add(textOf(event)); };
        task->startRecover();
        EXPECT_EQ(events.waitFor("success", "failure"), "failure  100020 Contact record failed") << answer;
    }
}

TEST_F(ContactRecoverTaskTest, FailsWhereTheFirstFileHasNoId) {
    on(files, R"({"code":0,"data":[{},{"fileId":"f"}]})");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100020 Contact recode no file id");
}

TEST_F(ContactRecoverTaskTest, HandsTheRefusalOfTheDetailOver) {
    on(detail, R"({"code":8,"msg":"gone"})");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 8 gone");
}

TEST_F(ContactRecoverTaskTest, FailsWhereTheDetailHasNoCode) {
    on(detail, "{}");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100021 Contact get file failed");
}

TEST_F(ContactRecoverTaskTest, FailsWithoutALinkToTheContent) {
    details(
        R"("downloadLinks":[{"usage":"thumbnail","downloadLink":"x"},{"usage":"content","downloadLink":""}])");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100021 Contact get file no download url");
}

TEST_F(ContactRecoverTaskTest, FailsWithoutAnyLinks) {
    details(R"("id":"f")");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100021 Contact get file no download url");
}

TEST_F(ContactRecoverTaskTest, FailsWhereTheLinkIsNoAddress) {
    details(R"("downloadLinks":[{"usage":"content","downloadLink":"no address"}])");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100022 Contact download file failed");
}

TEST_F(ContactRecoverTaskTest, FailsWhereTheDownloadBreaksOff) {
    cut("GET /content");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100022 Contact download file failed");
}

TEST_F(ContactRecoverTaskTest, FailsWhereTheFileIsNoText) {
    on("GET /content", "\xff\xfe");
    EXPECT_EQ(runToTheEnd(), "failure the-hash 100023 Contact import failed");
}

TEST_F(ContactRecoverTaskTest, TakesTheNameAsItStands) {
    describe("book");
    EXPECT_EQ(runToTheEnd(), "success the-hash 0 success");
    EXPECT_THAT(temporaryFiles(), ElementsAre("book"));
}

TEST_F(ContactRecoverTaskTest, ANameDoesNotLeadOutOfTheTemporaryFolder) {
    describe("../../escaped.vcf");
    EXPECT_EQ(runToTheEnd(), "success the-hash 0 success");
    EXPECT_THAT(temporaryFiles(), ElementsAre("escaped.vcf"));
}

TEST_F(ContactRecoverTaskTest, ANameThatIsNoneGetsTheOneOfAnAbsentName) {
    for (const auto* name : {"", "..", "../..", ".", "/", "\\u0000x"}) {
        TextEvents events;
        describe(name);
        const auto task = std::make_shared<ContactRecoverTask>();
        task->recordId = "record-1";
        task->onCallback = [add = events.writer()](const ContactResult& event) { add(textOf(event)); };
        task->startRecover();
        EXPECT_EQ(events.waitFor("success", "failure"), "success  0 success") << name;
        EXPECT_THAT(temporaryFiles(), ElementsAre(testing::MatchesRegex("contact_[0-9]+_[0-9]+\\.vcf")))
            << name;
        emptyTemporaryFolder();
    }
}

}  // namespace
}  // namespace baseapi
