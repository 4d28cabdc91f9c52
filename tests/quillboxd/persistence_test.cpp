#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

class PersistenceTest : public testing::Test {
  protected:
    std::size_t storedBlobs() const {
        const auto blobs = std::filesystem::directory_iterator(process_.dataFolder() / "blobs");
        return static_cast<std::size_t>(std::count_if(
            begin(blobs), end(blobs), [](const auto& entry) { return entry.is_regular_file(); }));
    }

    QuillboxdProcess process_;
    Client client_{process_.url()};
};

TEST_F(PersistenceTest, WhatWasAcknowledgedIsThereAfterAKill) {
    const auto bytes = someBytes(500'000);
    const auto folder = client_.makeFolder("folder");
    const auto id = client_.upload("file", bytes, 200'000, folder);
    const auto url = client_.contentUrl(id);
    process_.kill();
    process_.start();
    EXPECT_THAT(client_.names(), ElementsAre("folder"));
    EXPECT_THAT(client_.names(folder), ElementsAre("file"));
    EXPECT_EQ(send("GET", url).body, bytes);
    EXPECT_EQ(Client(process_.url()).container(), client_.container());
}

TEST_F(PersistenceTest, AnUploadGoesOnAfterAKill) {
    const auto bytes = someBytes(500'000);
    const auto created = client_.create(client_.createBody("file", bytes, 100'000)).object();
    auto first = created;
    auto second = created;
    first.at("multiParts").as_array().resize(3);
    auto& rest = second.at("multiParts").as_array();
    rest.erase(rest.begin(), rest.begin() + 3);
    client_.putParts(first, bytes);
    process_.kill();
    process_.start();
    client_.putParts(second, bytes);
    EXPECT_EQ(client_.complete(textOf(created, "fileId"), bytes).status, 200);
    EXPECT_EQ(client_.download(textOf(created, "fileId")), bytes);
}

TEST_F(PersistenceTest, LeftoversOfUnfinishedPartsAreSweptAway) {
    client_.upload("file", someBytes(1000));
    std::ofstream(process_.dataFolder() / "blobs" / "abandoned") << "half a part";
    EXPECT_EQ(storedBlobs(), 2u);
    process_.kill();
    process_.start();
    EXPECT_EQ(storedBlobs(), 1u);
}

TEST_F(PersistenceTest, APartSentAgainLeavesNoBytesBehind) {
    const auto bytes = someBytes(1000);
    const auto created = client_.create(client_.createBody("file", bytes, 1000)).object();
    for (int i = 0; i < 3; ++i) client_.putParts(created, bytes);
    EXPECT_EQ(storedBlobs(), 1u);
    auto other = client_.createBody("other", bytes, 400);
    const auto second = client_.create(other).object();
    client_.putParts(second, bytes);
    EXPECT_EQ(client_.complete(textOf(created, "fileId"), bytes).status, 200);
    EXPECT_EQ(client_.complete(textOf(second, "fileId"), bytes).status, 200);
    EXPECT_EQ(storedBlobs(), 1u);
    EXPECT_EQ(client_.download(textOf(second, "fileId")), bytes);
}

TEST_F(PersistenceTest, AResetRemovesTheBytesToo) {
    client_.upload("file", someBytes(1000));
    send("POST", process_.url() + "/_dev/reset");
    EXPECT_EQ(storedBlobs(), 0u);
    process_.kill();
    process_.start();
    expectRefused(client_.get("/access"), 401, "unknown");
}

TEST_F(PersistenceTest, NothingIsWrittenOutsideTheDataFolder) {
    client_.upload("file", someBytes(1000));
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(process_.dataFolder().parent_path())) {
        names.push_back(entry.path().filename());
    }
    EXPECT_THAT(names, UnorderedElementsAreArray({"data", "errors"}));
}

/// Uploads small files one after the other until the service is gone; notes what was acknowledged.
void uploadUntilGone(const Client& client, const std::string& prefix,
                     std::vector<std::string>& acknowledged) {
    for (int number = 0;; ++number) {
        const auto bytes = someBytes(100'000, static_cast<unsigned>(number));
        const auto name = prefix + std::to_string(number);
        auto body = client.createBody(name, bytes + name, 40'000);
        const auto created = client.create(body);
        if (created.status != 200) return;
        for (const auto& answer : client.putParts(created.object(), bytes + name)) {
            if (answer.status != 200) return;
        }
        if (client.complete(textOf(created.object(), "fileId"), bytes + name).status != 200) return;
        acknowledged.push_back(name);
    }
}

TEST_F(PersistenceTest, AKillAtAnyMomentTearsNothing) {
    std::mt19937 engine(std::random_device{}());
    std::vector<std::string> acknowledged;
    for (int round = 0; round < 20; ++round) {
        std::vector<std::string> here;
        std::thread worker([&] { uploadUntilGone(client_, std::to_string(round) + "-", here); });
        // The moment of the kill is the point of this test, so it is left to chance.
        std::this_thread::sleep_for(std::chrono::microseconds(engine() % 60'000));
        process_.kill();
        worker.join();
        acknowledged.insert(acknowledged.end(), here.begin(), here.end());
        process_.start();
    }
    const auto names = client_.names();
    EXPECT_THAT(names, testing::IsSupersetOf(acknowledged));
    EXPECT_LE(names.size(), acknowledged.size() + 20);
    const auto list = client_.post("/files/list", "{}").object();
    for (const auto& file : list.at("files").as_array()) {
        const auto bytes = client_.download(textOf(file.as_object(), "id"));
        EXPECT_EQ(sha256Hex(bytes), textOf(file.as_object(), "sha256"));
    }
}

}  // namespace
}  // namespace quillboxd_test
