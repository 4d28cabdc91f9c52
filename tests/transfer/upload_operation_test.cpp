#include "baseapi/transfer/upload_operation.h"

#include "baseapi/core/main_queue.h"
#include "tests/transfer/upload_fixture.h"

namespace baseapi {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UploadOperationTest : public UploadTest {
  protected:
    std::shared_ptr<UploadOperation> operationFor(UploadProcessCallback callback) {
        return std::make_shared<UploadOperation>("folder-1", fileOf("abc"), "", 4, slicerOf(onePart),
                                                 std::move(callback));
    }
    std::shared_ptr<UploadOperation> operation() { return operationFor(events_.callback()); }
    /// Waits until the queue's worker is free.
    void drainQueue() {
        Event idle;
        queue_.addOperation(std::make_shared<BlockOperation>([&](const auto&) { idle.set(); }));
        EXPECT_TRUE(idle.wait());
    }

    UploadEvents events_;
    Event letGo_;
    NamedOperationQueue queue_{"FILES", 1};
};

TEST_F(UploadOperationTest, OccupiesItsWorkerUntilTheUploadHasEnded) {
    on(create, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(letGo_));
        exchange.answer(200, R"({"code":0,"rapidUpload":true})");
    });
    std::atomic<bool> nextRan = false;
    queue_.addOperation(operation());
    queue_.addOperation(std::make_shared<BlockOperation>([&](const auto&) { nextRan = true; }));
    ASSERT_TRUE(server_->waitForRequests(1));
    EXPECT_FALSE(nextRan);
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    drainQueue();
    EXPECT_TRUE(nextRan);
    EXPECT_TRUE(logged("UploadOperation onSuccess code = 0, msg=rapid success"));
}

TEST_F(UploadOperationTest, DeliversTheLastEventOnTheMainQueue) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    Event ended;
    queue_.addOperation(operationFor([&](const UploadProcessResult&) {
        EXPECT_TRUE(test_support::isOnMainQueue());
        ended.set();
    }));
    EXPECT_TRUE(ended.wait());
}

TEST_F(UploadOperationTest, PassesOnWhatHappensOnTheWay) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({3}));
    on("PUT /part/1", 200);
    queue_.addOperation(operation());
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_THAT(events_.withoutProgress(), ElementsAre("onItemFinish 10 0 true", "onSuccess 0 success"));
    EXPECT_TRUE(logged("UploadOperation onProgress bytes = 3, total = 0"));
    EXPECT_TRUE(logged("UploadOperation onItemFinish subHash = 10"));
    EXPECT_THAT(server_->requests().at(0).body, testing::HasSubstr(R"("parentFolder":["folder-1"])"));
}

TEST_F(UploadOperationTest, DeliversAFailure) {
    on(create, 500, R"({"code":1,"msg":"no"})");
    queue_.addOperation(operation());
    EXPECT_EQ(events_.waitForLast(), "onFailure 100016 file invaild");
    EXPECT_TRUE(logged("UploadOperation onFailure errCode = 100016, errMsg=file invaild"));
}

TEST_F(UploadOperationTest, DeliversAFailureOfTheFirstStep) {
    queue_.addOperation(std::make_shared<UploadOperation>("", URL("https://example.org/"), "", 4,
                                                          slicerOf(onePart), events_.callback()));
    EXPECT_EQ(events_.waitForLast(), "onFailure 100016 file invaild");
}

TEST_F(UploadOperationTest, NeverRunsWhenItIsCancelledBefore) {
    const auto cancelled = operation();
    cancelled->cancel();
    queue_.addOperation(cancelled);
    drainQueue();
    drainMainQueue();
    EXPECT_THAT(events_.all(), IsEmpty());
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadOperationTest, FreesItsWorkerAtOnceAndDeliversNoLastEventWhenItIsCancelled) {
    on(create, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(letGo_));
        exchange.answer(200, createdWithParts({3}));
    });
    const auto running = operation();
    queue_.addOperation(running);
    ASSERT_TRUE(server_->waitForRequests(1));
    running->cancel();
    drainQueue();  // though the answer is still held back
    letGo_.set();
    ASSERT_TRUE(test_support::recordingLog().waitForBeginning("UploadProcessTask release self "));
    drainMainQueue();
    EXPECT_THAT(events_.all(), IsEmpty());
    running->cancel();
    EXPECT_THAT(events_.all(), IsEmpty());
}

TEST_F(UploadOperationTest, CancelsTheUploadWhenItIsCancelledWhileTheFileIsHashed) {
    on(create, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(letGo_));
        exchange.answer(200, createdWithParts({3}));
    });
    std::shared_ptr<UploadOperation> running;
    running = std::make_shared<UploadOperation>(
        "", fileOf("abc"), "", 4, std::make_shared<TestSlicer>([&](const URL&) -> std::optional<std::string> {
            running->cancel();
            return onePart;
        }),
        events_.callback());
    queue_.addOperation(running);
    drainQueue();  // the upload itself is cancelled by then
    letGo_.set();
    ASSERT_TRUE(test_support::recordingLog().waitForBeginning("UploadProcessTask release self "));
    drainMainQueue();
    EXPECT_THAT(events_.all(), IsEmpty());
}

TEST_F(UploadOperationTest, CancelledAfterItsEndDoesNothing) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    const auto ended = operation();
    queue_.addOperation(ended);
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    ended->cancel();
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
}

}  // namespace
}  // namespace baseapi
