#include "tests/quillboxd/backup_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BackupRecordsTest : public BackupTest {
  protected:
    json::object fileBody(const std::string& name, const std::string& bytes) const {
        auto body = client_.createBody(name, bytes, 1 << 20);
        body["recordId"] = record_;
        return body;
    }
    HttpAnswer createFile(const json::object& body, const BackupClient::Lock& lock) const {
        return client_.plain("POST", "record/" + record_ + "/file", json::serialize(body), lock);
    }
    /// All steps of a new file of the record; returns its id.
    std::string upload(const std::string& name, const std::string& bytes) const {
        const auto created = createFile(fileBody(name, bytes), lock_).object();
        client_.putParts(created, bytes);
        const auto id = textOf(created, "fileId");
        EXPECT_EQ(client_.complete(id, bytes).status, 200);
        return id;
    }
    HttpAnswer files(int pageSize = 100) const {
        return client_.plain("GET", "record/" + record_ + "/files?recordId=" + record_ +
                                        "&pageSize=" + std::to_string(pageSize));
    }

    const std::string lock_ = client_.takeLock();
    const std::string record_ = client_.addRecord(lock_);
};

TEST_F(BackupRecordsTest, ANewRecordIsOpen) {
    const auto answer =
        client_.plain("POST", "record", R"({"moduleCode":"102","deviceId":7,"properties":"mine"})", lock_);
    const auto record = BackupClient::dataOf(answer);
    EXPECT_EQ(record.at("status").as_int64(), 0);
    EXPECT_EQ(record.at("version").as_int64(), 1);
    EXPECT_EQ(textOf(record, "moduleCode"), "102");
    EXPECT_EQ(textOf(record, "properties"), "mine");
    EXPECT_FALSE(record.contains("endTime"));
    EXPECT_FALSE(record.contains("deviceInfo"));
    EXPECT_EQ(client_.record(textOf(record, "recordId")), record);
}

TEST_F(BackupRecordsTest, EveryFieldOfARecordHasItsType) {
    const auto add = [&](const char* body) { return client_.plain("POST", "record", body, lock_); };
    expectRefused(add(R"({"deviceId":7})"), 400, "moduleCode");
    expectRefused(add(R"({"moduleCode":"102"})"), 400, "deviceId");
    expectRefused(add(R"({"moduleCode":"102","deviceId":"7"})"), 400, "deviceId");
    expectRefused(add(R"({"moduleCode":"102","deviceId":7,"properties":{}})"), 400, "properties");
    expectRefused(client_.finish(record_, lock_, R"({"properties":1})"), 400, "properties");
    expectRefused(client_.finish(record_, lock_, R"({"recordId":"0"})"), 400, "recordId");
}

TEST_F(BackupRecordsTest, ARecordIsFinishedWithItsResult) {
    EXPECT_EQ(client_.finish(record_, lock_, R"({"recordId":")" + record_ + R"(","properties":"{}"})").status,
              200);
    const auto record = client_.record(record_);
    EXPECT_EQ(record.at("status").as_int64(), 1);
    EXPECT_EQ(record.at("version").as_int64(), 2);
    EXPECT_EQ(textOf(record, "properties"), "{}");
    EXPECT_GE(textOf(record, "endTime"), textOf(record, "createTime"));
}

TEST_F(BackupRecordsTest, AResultWithoutPropertiesLeavesThoseThatAreThere) {
    client_.finish(record_, lock_, R"({"properties":"first"})");
    EXPECT_EQ(client_.finish(record_, lock_, "{}").status, 200);
    EXPECT_EQ(textOf(client_.record(record_), "properties"), "first");
}

TEST_F(BackupRecordsTest, ARecordOfABoundDeviceNamesIt) {
    const auto device = BackupClient::dataOf(client_.cloudFile(
        "POST", "device", R"({"machineCode":"m","deviceName":"Anna's phone","deviceOS":"os"})"));
    const auto id = device.at("deviceId").as_int64();
    const auto record = client_.record(client_.addRecord(lock_, "102", id));
    const auto& info = record.at("deviceInfo").as_object();
    EXPECT_EQ(textOf(info, "deviceId"), std::to_string(id));
    EXPECT_EQ(textOf(info, "deviceName"), "Anna's phone");
    EXPECT_EQ(textOf(info, "createTime"), textOf(device, "createTime"));
}

TEST_F(BackupRecordsTest, WritingNeedsTheLock) {
    for (const auto& lock : {BackupClient::Lock(), BackupClient::Lock(""), BackupClient::Lock("wrong")}) {
        expectRefused(client_.finish(record_, lock), 403, "lock");
        expectRefused(client_.remove(record_, lock), 403, "lock");
        expectRefused(createFile(fileBody("a", "1"), lock), 403, "lock");
    }
    EXPECT_EQ(client_.record(record_).at("status").as_int64(), 0);
}

TEST_F(BackupRecordsTest, TheNewestRecordComesFirst) {
    const auto second = client_.addRecord(lock_);
    EXPECT_THAT(client_.recordIds("deviceId=7&moduleCode=102&pageSize=100"), ElementsAre(second, record_));
}

TEST_F(BackupRecordsTest, AListIsOfOneDeviceAndModule) {
    const auto album = client_.addRecord(client_.takeLock("101"), "101");
    const auto other = client_.addRecord(lock_, "102", 8);
    EXPECT_THAT(client_.recordIds("deviceId=7&moduleCode=101&pageSize=100"), ElementsAre(album));
    EXPECT_THAT(client_.recordIds("deviceId=8&moduleCode=102&pageSize=100"), ElementsAre(other));
    EXPECT_THAT(client_.recordIds("deviceId=9&moduleCode=102&pageSize=100"), IsEmpty());
    EXPECT_THAT(client_.recordIds("deviceId=0&moduleCode=&pageSize=100"), ElementsAre(other, album, record_));
}

TEST_F(BackupRecordsTest, AListComesInPages) {
    const auto second = client_.addRecord(lock_);
    const auto third = client_.addRecord(lock_);
    const std::string first = "deviceId=7&moduleCode=102&pageSize=2";
    EXPECT_THAT(client_.recordIds(first + "&cursor="), ElementsAre(third, second));
    EXPECT_THAT(client_.recordIds(first + "&cursor=" + second), ElementsAre(record_));
    EXPECT_THAT(client_.recordIds(first + "&cursor=" + record_), IsEmpty());
}

TEST_F(BackupRecordsTest, AListThatMakesNoSenseIsRefused) {
    const auto list = [&](const std::string& query) { return client_.cloudFile("GET", "record?" + query); };
    expectRefused(list("moduleCode=102&pageSize=1"), 400, "deviceId");
    expectRefused(list("deviceId=x&moduleCode=102&pageSize=1"), 400, "deviceId");
    expectRefused(list("deviceId=7&pageSize=1"), 400, "moduleCode");
    expectRefused(list("deviceId=7&moduleCode=102"), 400, "pageSize");
    expectRefused(list("deviceId=7&moduleCode=102&pageSize=0"), 400, "pageSize");
    expectRefused(list("deviceId=7&moduleCode=102&pageSize=1&cursor=x"), 400, "cursor");
}

TEST_F(BackupRecordsTest, ARecordThatIsDeletedIsGone) {
    const auto file = upload("a.vcf", "one");
    EXPECT_EQ(client_.remove(record_, lock_).status, 200);
    expectRefused(client_.plain("GET", "record/" + record_), 404, "no record");
    expectRefused(client_.remove(record_, lock_), 404, "no record");
    expectRefused(files(), 404, "no record");
    EXPECT_EQ(client_.download(file), "one");
}

TEST_F(BackupRecordsTest, AnotherAccountSeesNothing) {
    const BackupClient other(process_.url(), "other");
    expectRefused(other.plain("GET", "record/" + record_), 404, "no record");
    expectRefused(other.finish(record_, other.takeLock()), 404, "no record");
    EXPECT_THAT(other.recordIds("deviceId=7&moduleCode=102&pageSize=100"), IsEmpty());
}

TEST_F(BackupRecordsTest, AnIdThatIsNoneIsRefused) {
    expectRefused(client_.plain("GET", "record/x"), 400, "record id");
    expectRefused(client_.plain("GET", "record/999"), 404, "999");
}

// ---- files

TEST_F(BackupRecordsTest, AFileGoesIntoTheRecordAndIntoItsFolder) {
    const auto folder = client_.makeFolder("backup");
    auto body = fileBody("contacts.vcf", "BEGIN");
    body["parentFolder"] = json::array{folder};
    body["description"] = "all of them";
    const auto created = createFile(body, lock_).object();
    const auto id = textOf(created, "fileId");
    client_.putParts(created, "BEGIN");
    EXPECT_THAT(column(files(), "data", "fileId"), IsEmpty());
    EXPECT_EQ(client_.complete(id, "BEGIN").status, 200);
    EXPECT_THAT(client_.names(folder), ElementsAre("contacts.vcf"));
    const auto answer = files().object();
    const auto& file = answer.at("data").as_array().at(0).as_object();
    EXPECT_EQ(textOf(file, "recordId"), record_);
    EXPECT_EQ(textOf(file, "fileId"), id);
    EXPECT_EQ(textOf(file, "fileName"), "contacts.vcf");
    EXPECT_EQ(textOf(file, "sha256"), sha256Hex("BEGIN"));
    EXPECT_EQ(textOf(file, "size"), "5");
    EXPECT_EQ(textOf(file, "desc"), "all of them");
    EXPECT_EQ(client_.download(id), "BEGIN");
}

TEST_F(BackupRecordsTest, AFileThatIsThereAlreadyBelongsToTheRecordToo) {
    const auto id = upload("a.vcf", "one");
    const auto second = client_.addRecord(lock_);
    auto body = fileBody("a.vcf", "one");
    body["recordId"] = second;
    const auto answer = client_.plain("POST", "record/" + second + "/file", json::serialize(body), lock_);
    EXPECT_TRUE(answer.object().at("exist").as_bool());
    EXPECT_THAT(
        column(client_.plain("GET", "record/" + second + "/files?recordId=x&pageSize=1"), "data", "fileId"),
        ElementsAre(id));
}

TEST_F(BackupRecordsTest, APageOfFilesHasItsSize) {
    upload("b", "2");
    upload("a", "1");
    EXPECT_THAT(column(files(), "data", "fileName"), ElementsAre("a", "b"));
    EXPECT_THAT(column(files(1), "data", "fileName"), ElementsAre("a"));
    expectRefused(files(0), 400, "pageSize");
    expectRefused(client_.plain("GET", "record/" + record_ + "/files"), 400, "pageSize");
}

TEST_F(BackupRecordsTest, AFileIsCheckedAsAnyOther) {
    auto body = fileBody("a", "1");
    body["sha256"] = "no digest";
    expectRefused(createFile(body, lock_), 400, "sha256");
    body = fileBody("a", "1");
    body["recordId"] = "other";
    expectRefused(createFile(body, lock_), 400, "recordId");
    body["recordId"] = 1;
    expectRefused(createFile(body, lock_), 400, "recordId");
}

TEST_F(BackupRecordsTest, AFinishedRecordTakesNoMoreFiles) {
    client_.finish(record_, lock_);
    expectRefused(createFile(fileBody("a", "1"), lock_), 409, "finished");
}

}  // namespace
}  // namespace quillboxd_test
