#include "baseapi/platform/serial_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <numeric>
#include <stdexcept>
#include <vector>

#include "baseapi/platform/worker_pool.h"
#include "tests/support/event.h"

namespace baseapi {
namespace {

using test_support::Event;

TEST(SerialQueue, RunsJobsOneAfterTheOtherInTheirOrder) {
    const auto queue = makeSerialQueue(std::make_shared<WorkerPool>("test", WorkerPool::Limits{.kept = 4}));
    std::vector<int> ran;
    Event done;
    for (int i = 0; i < 1'000; ++i) queue->post([&, i] { ran.push_back(i); });
    queue->post([&] { done.set(); });
    ASSERT_TRUE(done.wait());
    std::vector<int> inOrder(1'000);
    std::iota(inOrder.begin(), inOrder.end(), 0);
    EXPECT_EQ(ran, inOrder);
}

TEST(SerialQueue, TakesUpAJobThatWasPostedByItsLast) {
    const auto queue = makeSerialQueue(std::make_shared<WorkerPool>("test"));
    for (int round = 0; round < 100; ++round) {
        Event ended;
        queue->post([&] { queue->post([&] { ended.set(); }); });
        ASSERT_TRUE(ended.wait());
    }
}

TEST(SerialQueue, LeavesThePoolToOthersWhereAJobOfItBlocks) {
    const auto pool = std::make_shared<WorkerPool>("test");
    const auto queue = makeSerialQueue(pool);
    Event open, blocked, ended;
    std::atomic<bool> secondRan = false;
    queue->post([&] {
        blocked.set();
        EXPECT_TRUE(open.wait());
    });
    queue->post([&] {
        secondRan = true;
        ended.set();
    });
    ASSERT_TRUE(blocked.wait());
    Event ofThePool;
    pool->post([&] { ofThePool.set(); });
    EXPECT_TRUE(ofThePool.wait());
    EXPECT_FALSE(secondRan);
    open.set();
    EXPECT_TRUE(ended.wait());
}

TEST(SerialQueue, OutlivesJobsThatThrow) {
    const auto queue = makeSerialQueue(std::make_shared<WorkerPool>("test"));
    Event ended;
    queue->post([] { throw std::runtime_error("job"); });
    queue->post([&] { ended.set(); });
    EXPECT_TRUE(ended.wait());
}

}  // namespace
}  // namespace baseapi
