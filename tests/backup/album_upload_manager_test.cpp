#include "baseapi/backup/album_upload_manager.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "tests/backup/backup_fixture.h"

namespace baseapi {
namespace {

namespace fs = std::filesystem;
using test_support::Event;
using test_support::Exchange;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using MediaType = PhotoAsset::MediaType;

class AlbumUploadManagerTest : public BackupServiceTest {
  protected:
    void SetUp() override {
        BackupServiceTest::SetUp();
        run_->deviceId = 7;
        run_->onCallback = events_.callback();
        auto& plan = test_support::photoLibrary().plan;
        plan.imageData = [](const auto& asset, const auto& answer) {
            answer("bytes of " + asset.localIdentifier);
        };
        plan.videoFile = [this](const auto& asset, const auto& answer) {
            const auto path = folder_ / (asset.localIdentifier + ".mov");
            std::ofstream(path) << "video";
            answer(path.string());
        };
    }
    static void assets(const std::vector<PhotoAsset>& assets) {
        test_support::photoLibrary().plan.assets = assets;
    }
    std::string runToTheEnd() {
        run_->start();
        return events_.waitForComplete();
    }

    BackupEvents events_;
    std::shared_ptr<AlbumUploadManager> run_ = std::make_shared<AlbumUploadManager>();
};

TEST_F(AlbumUploadManagerTest, SendsPicturesAndVideosIntoTheirFolders) {
    assets({{"v", MediaType::video}, {"p", MediaType::image}});
    EXPECT_EQ(runToTheEnd(), "onComplete 2 0 0 closed");
    const auto folders = requestsOf(createDirectory);
    ASSERT_EQ(folders.size(), 2U);
    EXPECT_THAT(folders[0].body, HasSubstr(R"("fileName":"Images")"));
    EXPECT_THAT(folders[1].body, HasSubstr(R"("fileName":"Videos")"));
    const auto files = requestsOf(createFile);
    ASSERT_EQ(files.size(), 2U);
    EXPECT_THAT(files[0].body,
                testing::AllOf(HasSubstr(R"("parentFolder":["folder-1"])"), HasSubstr(".jpg\"")));
    EXPECT_THAT(files[1].body,
                testing::AllOf(HasSubstr(R"("parentFolder":["folder-2"])"), HasSubstr("v.mov\"")));
    EXPECT_THAT(test_support::photoLibrary().requests(), ElementsAre("image network 2", "video network 1"));
    EXPECT_TRUE(logged("======getAndUploadBackupList count 2======"));
    EXPECT_THAT(requestsOf(getScope), IsEmpty());
    EXPECT_EQ(requestsOf(takeLock)[0].body, R"({"moduleCode":"101"})");
    EXPECT_EQ(Preferences::shared().getString("backup_lock_id_101", ""), "lock-1");
}

TEST_F(AlbumUploadManagerTest, AnEmptyLibraryIsDoneAfterTheFolders) {
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 0 closed");
    EXPECT_EQ(requestsOf(createDirectory).size(), 2U);
    EXPECT_TRUE(
        logged("===============AlbumUploadManager createBackupRecord start =========================="));
}

TEST_F(AlbumUploadManagerTest, WithoutPermissionTheRunHasEndedWhenTheStartReturns) {
    test_support::photoLibrary().plan.status = 1;
    run_->start();
    EXPECT_THAT(events_.all(), ElementsAre("onComplete 0 0 100004 no album permission"));
    EXPECT_TRUE(logged("AlbumUploadManager no permission"));
}

TEST_F(AlbumUploadManagerTest, ARefusedRecordIsAFailureInTheLog) {
    on(createRecord, R"({"code":44,"msg":"no"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 44 no");
    EXPECT_TRUE(test_support::recordingLog().waitFor(
        "AlbumUploadManager createBackupRecord failure code = 44, msg = no"));
}

TEST_F(AlbumUploadManagerTest, FailsWhereNeitherFolderCanBeMade) {
    assets({{"p", MediaType::image}});
    on(createDirectory, R"({"code":5,"msg":"no"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 1 100012 Create path error");
    EXPECT_TRUE(waitFor(releaseLock, 2));
}

TEST_F(AlbumUploadManagerTest, FailsWhereNeitherFolderCanBeMadeForAnEmptyLibraryToo) {
    on(createDirectory, R"({"code":5,"msg":"no"})");
    EXPECT_EQ(runToTheEnd(), "onComplete 0 0 100012 Create path error");
}

TEST_F(AlbumUploadManagerTest, AKindWithoutAFolderCountsAsFailed) {
    assets({{"p", MediaType::image}, {"v", MediaType::video}});
    on(createDirectory, [](Exchange& exchange) {
        exchange.answer(200, exchange.request.body.find("Images") != std::string::npos
                                 ? R"({"code":0,"id":"folder-1"})"
                                 : R"({"code":5,"msg":"no"})");
    });
    EXPECT_EQ(runToTheEnd(), "onComplete 1 1 0 closed");
    EXPECT_EQ(requestsOf(createFile).size(), 1U);
}

TEST_F(AlbumUploadManagerTest, AFolderThatIsNotMadeInTimeCountsAsNone) {
    on(createDirectory, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(late_));
        exchange.answer(200, R"({"code":0,"id":"late"})");
    });
    run_->start();
    for (std::size_t folder = 1; folder <= 2; ++folder) {
        ASSERT_TRUE(waitFor(createDirectory, folder));
        ASSERT_TRUE(test_support::testWaitClock().awaitWaiting());
        test_support::testWaitClock().expire();
    }
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 0 100012 Create path error");
    late_.set();
}

TEST_F(AlbumUploadManagerTest, AnAssetWithoutAFileStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    test_support::photoLibrary().plan.imageData = [](const auto&, const auto& answer) {
        answer(std::nullopt);
    };
    assets({{"p", MediaType::image}});
    EXPECT_DEATH(runToTheEnd(), "no file for the asset p");
}

TEST_F(AlbumUploadManagerTest, ACancelEndsTheRunAtTheNextAsset) {
    assets({{"p1", MediaType::image}, {"p2", MediaType::image}});
    Event asked;
    Event cancelled;
    test_support::photoLibrary().plan.imageData = [&](const auto&, const auto& answer) {
        asked.set();
        EXPECT_TRUE(cancelled.wait());
        answer("bytes");
    };
    run_->start();
    ASSERT_TRUE(asked.wait());
    run_->cancel();
    EXPECT_EQ(events_.waitForComplete(), "onComplete 0 2 100009 User cancel");
    cancelled.set();
    ASSERT_TRUE(waitFor(closeRecord, 2));
    EXPECT_EQ(events_.completions().size(), 1U);
    EXPECT_THAT(requestsOf(createFile), IsEmpty());
}

}  // namespace
}  // namespace baseapi
