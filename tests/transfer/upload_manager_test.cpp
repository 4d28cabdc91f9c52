#include "baseapi/transfer/upload_manager.h"

#include "tests/transfer/upload_fixture.h"

namespace baseapi {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

class UploadManagerTest : public UploadTest {
  protected:
    void SetUp() override {
        UploadTest::SetUp();
        manager_->onTotalCallback = events_.callback();
        file_ = fileOf("0123456789");
    }

    /// Part `number` is one byte at that place, and goes to "/part/NUMBER".
    std::string addPart(int number) {
        const auto task = std::make_shared<UploadTask>();
        task->hash1 = std::to_string(number) + std::to_string(number);
        task->uploadUrl = server_->url("/part/" + std::to_string(number));
        task->file = file_;
        task->offset = number;
        task->length = 1;
        manager_->add(task);
        tasks_.push_back(task);
        return task->hash1;
    }

    UploadEvents events_;
    std::optional<URL> file_;
    NamedOperationQueue queue_{"PARTS", 3};
    std::shared_ptr<UploadManager> manager_ = std::make_shared<UploadManager>(queue_);
    std::vector<std::shared_ptr<UploadTask>> tasks_;
};

TEST_F(UploadManagerTest, SucceedsWhenAllPartsHaveBeenSent) {
    for (const int number : {1, 2, 3, 4, 5}) {
        addPart(number);
        on("PUT /part/" + std::to_string(number), 200);
    }
    manager_->submit();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_THAT(calls(), UnorderedElementsAre("PUT /part/1", "PUT /part/2", "PUT /part/3", "PUT /part/4",
                                              "PUT /part/5"));
    auto events = events_.withoutProgress();
    events.pop_back();
    EXPECT_THAT(events, UnorderedElementsAre("onItemFinish 11 0 true", "onItemFinish 22 0 true",
                                             "onItemFinish 33 0 true", "onItemFinish 44 0 true",
                                             "onItemFinish 55 0 true"));
}

TEST_F(UploadManagerTest, SendsAsManyPartsAtOnceAsTheQueueIsWideAndTakesAnswersInAnyOrder) {
    Event thirdAnswered;
    Event secondAnswered;
    on("PUT /part/1", [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(secondAnswered));
        exchange.answer(200);
    });
    on("PUT /part/2", [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(thirdAnswered));
        exchange.answer(200);
        secondAnswered.set();
    });
    on("PUT /part/3", [&](Exchange& exchange) {
        exchange.answer(200);
        thirdAnswered.set();
    });
    for (const int number : {1, 2, 3}) addPart(number);
    manager_->submit();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
}

TEST_F(UploadManagerTest, StartsPartsInTheOrderOfTheirKeysNotOfTheirNumbers) {
    NamedOperationQueue narrow("NARROW", 1);
    const auto manager = std::make_shared<UploadManager>(narrow);
    manager->onTotalCallback = events_.callback();
    for (const int number : {2, 9, 10}) {
        const auto task = std::make_shared<UploadTask>();
        task->hash1 = std::to_string(number) + "0";
        task->uploadUrl = server_->url("/part/" + std::to_string(number));
        task->file = file_;
        manager->add(task);
        on("PUT /part/" + std::to_string(number), 200);
    }
    manager->submit();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_THAT(calls(), ElementsAre("PUT /part/10", "PUT /part/2", "PUT /part/9"));
}

TEST_F(UploadManagerTest, FailsOnceAfterAllPartsHaveEndedWhenOneFails) {
    Event firstFailed;
    on("PUT /part/1", [&](Exchange& exchange) {
        exchange.reset();
        firstFailed.set();
    });
    for (const int number : {2, 3, 4, 5})
        on("PUT /part/" + std::to_string(number), [&](Exchange& exchange) {
            EXPECT_TRUE(exchange.waitFor(firstFailed));
            exchange.answer(200);
        });
    for (const int number : {1, 2, 3, 4, 5}) addPart(number);
    manager_->submit();
    EXPECT_EQ(events_.waitForLast(), "onFailure -1 upload part failed");
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
    EXPECT_EQ(events_.withoutProgress().size(), 6U);
    EXPECT_THAT(events_.all(), Contains("onItemFinish 11 0 false"));
    EXPECT_EQ(server_->requestCount(), 5U);
}

TEST_F(UploadManagerTest, FailsOnceWhenTheLastPartIsTheOneThatFails) {
    for (const int number : {1, 2}) on("PUT /part/" + std::to_string(number), 200);
    addPart(1);
    addPart(2);
    tasks_[1]->uploadUrl = "";
    manager_->submit();
    EXPECT_EQ(events_.waitForLast(), "onFailure -1 upload part failed");
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
    EXPECT_TRUE(logged("subCallback failure hash = 22, code = -1, msg = invalid params"));
}

TEST_F(UploadManagerTest, NeverPassesTheWordsOfAPartOn) {
    addPart(1);
    tasks_[0]->uploadUrl = "http://a b/";
    manager_->submit();
    EXPECT_EQ(events_.waitForLast(), "onFailure -1 upload part failed");
    EXPECT_TRUE(logged("subCallback failure hash = 11, code = -1, msg = upload sync error"));
}

TEST_F(UploadManagerTest, LogsItsSteps) {
    on("PUT /part/1", 200);
    addPart(1);
    manager_->submit();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    const std::string task = "UploadTask hash 11, offset 1, length 1";
    for (const auto& line :
         {std::string("UploadManager: uploadManager submit curTask Size = 1"), "task in " + task,
          "task execute " + task, std::string("subCallback procress  hash = 11, current = 1, total = 1"),
          std::string(R"(subCallback success resp = {"code":0,"msg":"success"})"),
          std::string("UploadManager: checkOnComplete")})
        EXPECT_TRUE(logged(line)) << line;
}

TEST_F(UploadManagerTest, SaysWhichPartItStillWaitsFor) {
    addPart(1);
    addPart(2);
    manager_->subCallback({UploadResult::onFailure{"11", -1, "x"}});
    drainMainQueue();
    EXPECT_TRUE(logged("UploadManager: checkOnComplete return value = hash 22, isFinish false, state 0"));
    EXPECT_EQ(events_.lastEvents(), 0U);
}

TEST_F(UploadManagerTest, AddsUpTheProgressOfAllPartsWithFailedOnesInFull) {
    for (const int number : {1, 2}) addPart(number);
    tasks_[0]->length = 1;
    manager_->subCallback({UploadResult::onFailure{"11", -1, "x"}});
    manager_->subCallback({UploadResult::onProgress{"22", 0, 1}});
    manager_->subCallback({UploadResult::onProgress{"22", 1, 1}});
    drainMainQueue();
    EXPECT_THAT(events_.all(), ElementsAre("onItemFinish 11 0 false", "onProgress 1/0", "onProgress 2/0"));
}

TEST_F(UploadManagerTest, ReportsTheTotalThatTheOwnerHasSet) {
    addPart(1);
    manager_->totalLength = 7;
    manager_->subCallback({UploadResult::onProgress{"11", 1, 1}});
    drainMainQueue();
    EXPECT_THAT(events_.all(), ElementsAre("onProgress 1/7"));
}

TEST_F(UploadManagerTest, CountsASuccessWithoutACodeAsAnItemThatFailedYetAsAPartThatIsDone) {
    addPart(1);
    manager_->subCallback({UploadResult::onSuccess{"11", BaseResponse{}}});
    drainMainQueue();
    EXPECT_THAT(events_.all(), ElementsAre("onItemFinish 11 0 false", "onSuccess 0 success"));
}

TEST_F(UploadManagerTest, NeverCompletesAfterAnAnswerThatHasNoJSONForm) {
    addPart(1);
    manager_->subCallback({UploadResult::onSuccess{"11", BaseResponse{.code = 0, .msg = "\xff"}}});
    drainMainQueue();
    EXPECT_TRUE(logged("subCallback success but change json error"));
    EXPECT_TRUE(logged("UploadManager: checkOnComplete return value = hash 11, isFinish false, state -1"));
    EXPECT_THAT(events_.all(), ElementsAre("onItemFinish 11 0 true"));

    manager_->cancel();
    manager_->subCallback({UploadResult::onFailure{"11", -1, "x"}});
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
}

TEST_F(UploadManagerTest, StartsNothingAfterACancel) {
    addPart(1);
    manager_->cancel();
    manager_->submit();
    EXPECT_THAT(events_.all(), ElementsAre("onFailure -1 has cancel"));
    EXPECT_TRUE(logged("UploadManager: UploadManager cancel"));
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadManagerTest, FailsAtTheFirstReportAfterACancelAndRepeatsItAtTheNext) {
    Event bothThere;
    for (const int number : {1, 2})
        on("PUT /part/" + std::to_string(number), [&](Exchange& exchange) {
            EXPECT_TRUE(exchange.waitFor(bothThere));
            exchange.answer(200);
        });
    for (const int number : {1, 2}) addPart(number);
    manager_->submit();
    ASSERT_TRUE(server_->waitForRequests(2));
    manager_->cancel();
    bothThere.set();
    EXPECT_EQ(events_.waitForLast(), "onFailure -1 upload part failed");
    ASSERT_TRUE(
        test_support::recordingLog().waitFor("subCallback failure hash = 11, code = -1, msg = has cancel"));
    ASSERT_TRUE(
        test_support::recordingLog().waitFor("subCallback failure hash = 22, code = -1, msg = has cancel"));
    ASSERT_TRUE(events_.waitForLasts(2));
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 2U);
    EXPECT_THAT(events_.all(), Not(Contains("onSuccess 0 success")));
}

TEST_F(UploadManagerTest, FailsWhenAPartThatWasSentReportsAfterACancelWhileOthersWait) {
    addPart(1);
    addPart(2);
    manager_->cancel();
    manager_->subCallback({UploadResult::onSuccess{"11", BaseResponse{.code = 0, .msg = "success"}}});
    drainMainQueue();
    EXPECT_THAT(events_.all(), ElementsAre("onItemFinish 11 0 true", "onFailure -1 upload part failed"));
}

TEST_F(UploadManagerTest, GivesNoResultAfterACancelWithNoPartInFlight) {
    Event release;
    Event idle;
    NamedOperationQueue narrow("NARROW", 1);
    narrow.addOperation(std::make_shared<BlockOperation>([&](const auto&) { EXPECT_TRUE(release.wait()); }));
    const auto manager = std::make_shared<UploadManager>(narrow);
    manager->onTotalCallback = events_.callback();
    const auto task = std::make_shared<UploadTask>();
    task->hash1 = "10";
    task->uploadUrl = server_->url("/part/1");
    task->file = file_;
    manager->add(task);
    manager->submit();
    manager->cancel();
    narrow.addOperation(std::make_shared<BlockOperation>([&](const auto&) { idle.set(); }));
    release.set();
    ASSERT_TRUE(idle.wait());
    drainMainQueue();
    EXPECT_THAT(events_.all(), IsEmpty());
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadManagerTest, IsLetGoOfWithItsTasksOnceNobodyNeedsIt) {
    // A manager and its tasks that kept each other would never go.
    addPart(1);
    const std::weak_ptr<UploadTask> task = tasks_[0];
    const std::weak_ptr<UploadManager> manager = manager_;
    {
        NamedOperationQueue none("NONE", 0);
        auto other = std::make_shared<UploadManager>(none);
        other->onTotalCallback = events_.callback();
        other->add(tasks_[0]);
        other->submit();
    }
    tasks_.clear();
    manager_.reset();
    EXPECT_TRUE(task.expired());
    EXPECT_TRUE(manager.expired());
}

using UploadManagerDeathTest = UploadManagerTest;

TEST_F(UploadManagerDeathTest, EndsTheProcessForAKeyThatItDoesNotKnow) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(
        {
            manager_->subCallback({UploadResult::onFailure{"unknown", -1, "x"}});
            drainMainQueue();
        },
        "no part has the key unknown");
}

}  // namespace
}  // namespace baseapi
