#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "quillboxd/store/database.h"
#include "tests/quillboxd/jobs_client.h"
#include "tests/quillboxd/zip_maker.h"

namespace quillboxd_test::jobs_persistence {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

enum Type { copy = 1, remove = 3, unpack = 4 };

class JobsPersistenceTest : public testing::Test {
  protected:
    void killAndStart() {
        process_.kill();
        process_.start();
    }
    std::string makeTree(int files) {
        const auto folder = client_.makeFolder("tree");
        for (int number = 0; number < files; ++number) {
            names_.push_back("file" + std::to_string(number));
            client_.upload(names_.back(), names_.back(), 100, folder);
        }
        std::sort(names_.begin(), names_.end());
        return folder;
    }
    std::size_t storedBlobs() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(process_.dataFolder() / "blobs"))
            count += entry.is_regular_file() ? 1 : 0;
        return count;
    }
    /// Makes a job that unpacks a large file, and waits until it is at it.
    std::string startLargeUnpacking() {
        const std::vector<Zipped> entries{{"zeros", std::string(large, '\0')}, {"b", someBytes(1'500'000)}};
        const auto archive = client_.upload("large.zip", makeZip(entries), 2'000'000);
        const auto known = onlyBlob();
        const auto id = client_.start(JobsClient::body(unpack, {archive}));
        while (statusOf(client_.detail(id)) < 2 && storedBlobs() == 1) {
        }
        for (const auto& blob : std::filesystem::directory_iterator(process_.dataFolder() / "blobs"))
            if (blob.path() != known) std::filesystem::create_hard_link(blob.path(), unpacked());
        return id;
    }
    /// What the service has written of the large file, also when it has given it up.
    std::filesystem::path unpacked() const { return process_.dataFolder() / "unpacked"; }
    std::filesystem::path onlyBlob() const {
        return std::filesystem::directory_iterator(process_.dataFolder() / "blobs")->path();
    }
    static std::int64_t statusOf(const json::object& detail) {
        return JobsClient::number(JobsClient::info(detail), "status");
    }

    static constexpr std::size_t large = 250'000'000;

    QuillboxdProcess process_;
    JobsClient client_{process_.url()};
    std::vector<std::string> names_;
};

TEST_F(JobsPersistenceTest, ACopyThatWasCutGoesOn) {
    const auto tree = makeTree(9);
    client_.makeFolder("target");
    client_.allow(4);
    const auto id = client_.start(JobsClient::body(copy, {tree}, "/target"));
    client_.awaitProgress(id, 40);
    killAndStart();
    const auto detail = client_.awaitEnd(id);
    EXPECT_EQ(statusOf(detail), 2) << json::serialize(detail);
    const auto made = JobsClient::column(detail, "taskInfos", "newFileId").at(0);
    EXPECT_THAT(client_.names(made), ElementsAreArray(names_));
}

TEST_F(JobsPersistenceTest, AnUnpackingThatWasCutGoesOn) {
    std::vector<Zipped> entries;
    for (int number = 0; number < 8; ++number)
        entries.push_back({"file" + std::to_string(number), someBytes(1000, static_cast<unsigned>(number))});
    const auto archive = client_.upload("archive.zip", makeZip(entries, "key"), 500);
    client_.allow(3);
    auto body = JobsClient::body(unpack, {archive});
    body["password"] = "key";
    const auto id = client_.start(body);
    client_.awaitProgress(id, 37);
    killAndStart();
    const auto detail = client_.awaitEnd(id);
    EXPECT_EQ(statusOf(detail), 2) << json::serialize(detail);
    const auto files = JobsClient::column(detail, "uncompressedFileList", "fileId");
    for (unsigned number = 0; number < 8; ++number)
        EXPECT_EQ(client_.download(files.at(number)), someBytes(1000, number));
}

TEST_F(JobsPersistenceTest, AKillAtAnyMomentDoesEachStepOnce) {
    const auto tree = makeTree(30);
    client_.makeFolder("target");
    std::mt19937 engine(std::random_device{}());
    for (int round = 0; round < 5; ++round) {
        const auto id = client_.start(JobsClient::body(copy, {tree}, "/target"));
        // The moment of the kill is the point of this test, so it is left to chance.
        std::this_thread::sleep_for(std::chrono::microseconds(engine() % 10'000));
        killAndStart();
        const auto detail = client_.awaitEnd(id);
        EXPECT_EQ(statusOf(detail), 2) << json::serialize(detail);
        const auto made = JobsClient::column(detail, "taskInfos", "newFileId").at(0);
        EXPECT_THAT(client_.names(made), ElementsAreArray(names_));
        expectRefused(client_.cancel(id), 409, "has ended");
        EXPECT_EQ(statusOf(client_.run(JobsClient::body(remove, {made}))), 2);
    }
}

TEST_F(JobsPersistenceTest, AJobThatWaitsDoesNotDelayTheEndOfTheService) {
    const auto tree = makeTree(3);
    client_.allow(1);
    const auto id = client_.start(JobsClient::body(remove, {tree}));
    client_.awaitProgress(id, 25);
    EXPECT_EQ(process_.terminate(), 0);
    process_.start();
    EXPECT_EQ(statusOf(client_.awaitEnd(id)), 2);
}

TEST_F(JobsPersistenceTest, AJobUnderWayDoesNotDelayTheEndOfTheService) {
    std::vector<Zipped> entries;
    for (int number = 0; number < 5000; ++number) entries.push_back({std::to_string(number), "x"});
    const auto id = client_.start(JobsClient::body(unpack, {client_.upload("many.zip", makeZip(entries))}));
    client_.awaitProgress(id, 0);
    EXPECT_EQ(process_.terminate(), 0);
    process_.start();
    EXPECT_EQ(statusOf(client_.detail(id)), 1);
}

TEST_F(JobsPersistenceTest, ACancelledJobLetsALargeFileBe) {
    EXPECT_EQ(client_.cancel(startLargeUnpacking()).status, 200);
    EXPECT_EQ(statusOf(client_.run(JobsClient::body(remove, {client_.makeFolder("next")}))), 2);
    EXPECT_LT(std::filesystem::file_size(unpacked()), large);
    EXPECT_EQ(storedBlobs(), 1u);
}

TEST_F(JobsPersistenceTest, AResetLetsALargeFileBe) {
    startLargeUnpacking();
    EXPECT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
    const JobsClient again(process_.url());
    EXPECT_EQ(statusOf(again.run(JobsClient::body(remove, {again.makeFolder("next")}))), 2);
    EXPECT_LT(std::filesystem::file_size(unpacked()), large);
    EXPECT_THAT(again.names(), IsEmpty());
    EXPECT_EQ(storedBlobs(), 0u);
}

TEST_F(JobsPersistenceTest, AJobThatTheDatabaseFailsToBeginEndsAndLeavesNothing) {
    const auto archive = client_.upload("archive.zip", makeZip({{"a", "1"}, {"b", "2"}}));
    process_.kill();
    quillboxd::Database((process_.dataFolder() / "quillboxd.sqlite").string())
        .script(
            "CREATE TRIGGER failure BEFORE INSERT ON job_entries WHEN NEW.number = 1 "
            "BEGIN SELECT RAISE(ABORT, 'worn out'); END");
    process_.start();
    const auto detail = client_.run(JobsClient::body(unpack, {archive}));
    EXPECT_EQ(statusOf(detail), 3);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "resultCode"), 13000500);
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultDesc").at(0), HasSubstr("worn out"));
    EXPECT_THAT(detail.at("uncompressedFileList").as_array(), IsEmpty());
    EXPECT_THAT(client_.names(), ElementsAre("archive.zip"));
    EXPECT_EQ(statusOf(client_.run(JobsClient::body(remove, {archive}))), 2);
}

TEST_F(JobsPersistenceTest, TheBytesOfDeletedFilesGoAtTheNextStart) {
    const auto tree = makeTree(3);
    client_.upload("kept", "kept bytes", 100);
    client_.run(JobsClient::body(remove, {tree}));
    killAndStart();
    EXPECT_EQ(storedBlobs(), 1u);
    EXPECT_EQ(client_.download(client_.upload("again", "file1", 100)), "file1");
}

}  // namespace
}  // namespace quillboxd_test::jobs_persistence
