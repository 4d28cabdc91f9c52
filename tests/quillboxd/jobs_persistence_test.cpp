#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "tests/quillboxd/jobs_client.h"
#include "tests/quillboxd/zip_maker.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAreArray;

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
    static std::int64_t statusOf(const json::object& detail) {
        return JobsClient::number(JobsClient::info(detail), "status");
    }

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

TEST_F(JobsPersistenceTest, TheBytesOfDeletedFilesGoAtTheNextStart) {
    const auto tree = makeTree(3);
    client_.upload("kept", "kept bytes", 100);
    client_.run(JobsClient::body(remove, {tree}));
    killAndStart();
    EXPECT_EQ(storedBlobs(), 1u);
    EXPECT_EQ(client_.download(client_.upload("again", "file1", 100)), "file1");
}

}  // namespace
}  // namespace quillboxd_test
