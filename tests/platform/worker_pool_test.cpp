#include "baseapi/platform/worker_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/support/event.h"

namespace baseapi {
namespace {

using test_support::Event;

/// Counts down to an event.
class CountDown {
  public:
    explicit CountDown(int count) : left_(count) {}
    void operator()() {
        if (--left_ == 0) done_.set();
    }
    bool wait() { return done_.wait(); }

  private:
    std::atomic<int> left_;
    Event done_;
};

TEST(WorkerPool, NeverRunsAJobInsideThePost) {
    WorkerPool pool("test");
    std::mutex held;
    Event ran;
    {
        const std::lock_guard lock(held);
        pool.post([&] {
            { const std::lock_guard inside(held); }
            ran.set();
        });
    }
    EXPECT_TRUE(ran.wait());
}

TEST(WorkerPool, GrowsWhereJobsBlock) {
    constexpr int kJobs = 30;
    WorkerPool pool("test", {.kept = 2});
    CountDown allInside(kJobs), allOut(kJobs);
    Event open;
    for (int i = 0; i < kJobs; ++i) {
        pool.post([&] {
            allInside();
            EXPECT_TRUE(open.wait());
            allOut();
        });
    }
    EXPECT_TRUE(allInside.wait());
    EXPECT_GE(pool.threads(), static_cast<std::size_t>(kJobs));
    open.set();
    EXPECT_TRUE(allOut.wait());
}

TEST(WorkerPool, GrowsNoFurtherThanItsLimit) {
    WorkerPool pool("test", {.kept = 1, .most = 3});
    CountDown threeInside(3), allOut(10);
    Event open;
    std::atomic<int> inside{0};
    for (int i = 0; i < 10; ++i) {
        pool.post([&] {
            EXPECT_LE(++inside, 3);
            threeInside();
            EXPECT_TRUE(open.wait());
            --inside;
            allOut();
        });
    }
    EXPECT_TRUE(threeInside.wait());
    EXPECT_EQ(pool.threads(), 3u);
    open.set();
    EXPECT_TRUE(allOut.wait());
}

TEST(WorkerPool, WakesAnIdleThreadWhereAllOthersBlock) {
    WorkerPool pool("test", {.kept = 1, .most = 2});
    for (int round = 0; round < 20; ++round) {
        Event open, ran;
        CountDown blocked(1);
        pool.post([&] {
            EXPECT_TRUE(open.wait());
            blocked();
        });
        pool.post([&] { ran.set(); });
        EXPECT_TRUE(ran.wait());
        open.set();
        EXPECT_TRUE(blocked.wait());
    }
    EXPECT_LE(pool.threads(), 2u);
}

TEST(WorkerPool, DoesShortJobsWithFewThreads) {
    WorkerPool pool("test", {.kept = 2, .patience = test_support::kPatience});
    CountDown done(10'000);
    for (int i = 0; i < 10'000; ++i) pool.post([&] { done(); });
    EXPECT_TRUE(done.wait());
    EXPECT_LE(pool.threads(), 2u);
}

TEST(WorkerPool, HasAnotherThreadAtOnceWhereOneIsAtLongWork) {
    WorkerPool pool("test", {.kept = 1, .most = 1, .patience = test_support::kPatience});
    for (int round = 0; round < 20; ++round) {
        Event atWork, open, ended;
        pool.post([&] {
            {
                const LongWork work;
                atWork.set();
                EXPECT_TRUE(open.wait());
            }
            ended.set();
        });
        ASSERT_TRUE(atWork.wait());
        Event ran;
        pool.post([&] { ran.set(); });
        EXPECT_TRUE(ran.wait(test_support::kPatience / 2));
        open.set();
        EXPECT_TRUE(ended.wait());
    }
    EXPECT_LE(pool.threads(), 2u);
}

TEST(WorkerPool, StaysWithOneThreadWhereLongWorkEndsSoon) {
    WorkerPool pool("test", {.kept = 1, .most = 1, .patience = test_support::kPatience});
    Event queued, ran;
    pool.post([&] {
        EXPECT_TRUE(queued.wait());
        const LongWork work;
    });
    pool.post([&] { ran.set(); });
    queued.set();
    EXPECT_TRUE(ran.wait(test_support::kPatience / 2));
    EXPECT_EQ(pool.threads(), 1u);
}

TEST(WorkerPool, HandsWhatIsQueuedToAnotherThreadWhereLongWorkGoesOn) {
    WorkerPool pool("test", {.kept = 1, .most = 1});
    Event queued, ran, ended;
    pool.post([&] {
        EXPECT_TRUE(queued.wait());
        {
            const LongWork outer;
            const LongWork inner;  // long work within long work
            EXPECT_TRUE(ran.wait());
        }
        ended.set();
    });
    pool.post([&] { ran.set(); });
    queued.set();
    EXPECT_TRUE(ended.wait());
}

TEST(WorkerPool, LetsThreadsLeaveThatHaveNothingToDo) {
    using std::chrono::milliseconds;
    WorkerPool pool("test", {.kept = 1, .idleFor = milliseconds(20)});
    CountDown allInside(8);
    Event open;
    for (int i = 0; i < 8; ++i) {
        pool.post([&] {
            allInside();
            EXPECT_TRUE(open.wait());
        });
    }
    ASSERT_TRUE(allInside.wait());
    EXPECT_GE(pool.threads(), 8u);
    open.set();
    const auto deadline = std::chrono::steady_clock::now() + test_support::kPatience;
    while (pool.threads() > 1 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    EXPECT_EQ(pool.threads(), 1u);
    CountDown again(1);
    pool.post([&] { again(); });
    EXPECT_TRUE(again.wait());
}

TEST(WorkerPool, OutlivesJobsThatThrow) {
    WorkerPool pool("test", {.kept = 1, .most = 1});
    CountDown done(1);
    pool.post([] { throw std::runtime_error("job"); });
    pool.post([] { throw 7; });
    pool.post([&] { done(); });
    EXPECT_TRUE(done.wait());
    EXPECT_EQ(pool.threads(), 1u);
}

TEST(WorkerPool, RunsWhatWasPostedAlsoAfterItsEnd) {
    CountDown done(101);
    Event open;
    {
        WorkerPool pool("test", {.kept = 1, .most = 1});
        pool.post([&] {
            EXPECT_TRUE(open.wait());
            done();
        });
        for (int i = 0; i < 100; ++i) pool.post([&] { done(); });
    }
    open.set();
    EXPECT_TRUE(done.wait());
}

TEST(WorkerPool, TakesJobsFromManyThreadsAndFromItsOwn) {
    WorkerPool pool("test");
    constexpr int kPosters = 4, kJobs = 2'000;
    CountDown done(2 * kPosters * kJobs);
    std::vector<std::jthread> posters;
    for (int poster = 0; poster < kPosters; ++poster) {
        posters.emplace_back([&] {
            for (int i = 0; i < kJobs; ++i) {
                pool.post([&] {
                    pool.post([&] { done(); });
                    done();
                });
            }
        });
    }
    EXPECT_TRUE(done.wait());
}

}  // namespace
}  // namespace baseapi
