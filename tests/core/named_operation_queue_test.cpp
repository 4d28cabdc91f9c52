#include "baseapi/core/named_operation_queue.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "baseapi/platform/worker_pool.h"
#include "tests/support/event.h"

namespace baseapi {
namespace {

using test_support::Event;

std::shared_ptr<Operation> block(std::function<void()> work) {
    return std::make_shared<BlockOperation>([work = std::move(work)](const QueuePlace&) { work(); });
}

TEST(NamedOperationQueue, IsHalfAsWideAsThereAreProcessors) {
    const NamedOperationQueue queue("HALF");
    EXPECT_EQ(activeProcessorCount(), static_cast<int>(::sysconf(_SC_NPROCESSORS_ONLN)));
    EXPECT_EQ(queue.width(), activeProcessorCount() / 2);
    EXPECT_EQ(queue.name(), "HALF");
}

TEST(NamedOperationQueue, RunsOperationsInTheOrderTheyWereAdded) {
    NamedOperationQueue queue("ORDER", 1);
    std::vector<int> order;
    Event done;
    for (int i = 0; i < 100; ++i) queue.addOperation(block([&, i] { order.push_back(i); }));
    queue.addOperation(block([&] { done.set(); }));
    ASSERT_TRUE(done.wait());
    ASSERT_EQ(order.size(), 100U);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(NamedOperationQueue, RunsAsManyAtOnceAsItIsWide) {
    NamedOperationQueue queue("WIDE", 3);
    std::barrier together(3);  // ends only when three run at once
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::atomic<int> left = 30;
    Event done;
    for (int i = 0; i < 30; ++i)
        queue.addOperation(block([&] {
            const int now = ++running;
            int before = most;
            while (now > before && !most.compare_exchange_weak(before, now)) {
            }
            together.arrive_and_wait();
            --running;
            if (--left == 0) done.set();
        }));
    ASSERT_TRUE(done.wait());
    EXPECT_EQ(most, 3);
}

TEST(NamedOperationQueue, HoldsAPlaceForAnOperationThatGoesOnElsewhere) {
    NamedOperationQueue queue("PLACES", 2);
    std::vector<QueuePlace> places;
    std::mutex mutex;
    std::atomic<int> begun = 0;
    Event third;
    for (int i = 0; i < 3; ++i)
        queue.addOperation(std::make_shared<BlockOperation>([&](QueuePlace place) {
            {
                const std::lock_guard lock(mutex);
                places.push_back(std::move(place));
            }
            if (++begun == 3) third.set();
        }));
    while (begun < 2) std::this_thread::yield();
    Event later;  // the shared pool has done all that it was given before
    sharedPool()->post([&] { later.set(); });
    ASSERT_TRUE(later.wait());
    EXPECT_EQ(begun, 2);
    QueuePlace left;
    {
        const std::lock_guard lock(mutex);
        left = std::move(places.front());
    }
    left.reset();
    EXPECT_TRUE(third.wait());
}

TEST(NamedOperationQueue, OfWidthZeroRunsNothing) {
    std::atomic<bool> ran = false;
    std::weak_ptr<Operation> waiting;
    {
        NamedOperationQueue queue("NONE", 0);
        auto operation = block([&] { ran = true; });
        waiting = operation;
        queue.addOperation(std::move(operation));
        EXPECT_FALSE(waiting.expired());
    }
    EXPECT_TRUE(waiting.expired());
    EXPECT_FALSE(ran);
}

TEST(NamedOperationQueue, NeverRunsAnOperationThatWasCancelledBeforeItStarted) {
    NamedOperationQueue queue("CANCEL", 1);
    Event occupied;
    Event release;
    Event done;
    std::atomic<bool> ran = false;
    queue.addOperation(block([&] {
        occupied.set();
        ASSERT_TRUE(release.wait());
    }));
    ASSERT_TRUE(occupied.wait());
    const auto cancelled = block([&] { ran = true; });
    queue.addOperation(cancelled);
    queue.addOperation(block([&] { done.set(); }));
    cancelled->cancel();
    release.set();
    ASSERT_TRUE(done.wait());
    EXPECT_FALSE(ran);
    cancelled->cancel();
    cancelled->start();
    EXPECT_FALSE(ran);
}

TEST(NamedOperationQueue, LetsAnOperationThatHasStartedRunOn) {
    NamedOperationQueue queue("RUNS_ON", 1);
    Event started;
    Event release;
    Event ended;
    const auto operation = block([&] {
        started.set();
        ASSERT_TRUE(release.wait());
        ended.set();
    });
    queue.addOperation(operation);
    ASSERT_TRUE(started.wait());
    operation->cancel();
    release.set();
    EXPECT_TRUE(ended.wait());
    operation->cancel();  // on an operation that has ended: nothing
}

TEST(NamedOperationQueue, SurvivesAnOperationThatThrows) {
    NamedOperationQueue queue("THROWS", 1);
    Event done;
    queue.addOperation(block([] { throw std::runtime_error("broken"); }));
    queue.addOperation(block([&] { done.set(); }));
    EXPECT_TRUE(done.wait());
}

TEST(NamedOperationQueue, RunsWhatWasAddedBeforeItWentAway) {
    Event release;
    Event done;
    {
        NamedOperationQueue queue("GONE", 1);
        queue.addOperation(block([&] { ASSERT_TRUE(release.wait()); }));
        queue.addOperation(block([&] { done.set(); }));
    }
    release.set();
    EXPECT_TRUE(done.wait());
}

TEST(NamedOperationQueue, HasThreadsThatTakeNoSignals) {
    NamedOperationQueue queue("SIGNALS", 1);
    Event done;
    std::atomic<bool> blocked = false;
    queue.addOperation(block([&] {
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        blocked = sigismember(&mask, SIGINT) == 1 && sigismember(&mask, SIGTERM) == 1;
        done.set();
    }));
    ASSERT_TRUE(done.wait());
    EXPECT_TRUE(blocked);
    sigset_t own;
    pthread_sigmask(SIG_SETMASK, nullptr, &own);
    EXPECT_EQ(sigismember(&own, SIGINT), 0);
}

TEST(NamedOperationQueue, LetsGoOfAnOperationOnceItHasRun) {
    NamedOperationQueue queue("LETS_GO", 1);
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    Event done;
    queue.addOperation(block([held = std::move(held)] {}));
    queue.addOperation(block([&] { done.set(); }));
    ASSERT_TRUE(done.wait());
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace baseapi
