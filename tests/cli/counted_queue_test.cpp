#include "cli/counted_queue.h"

#include <gtest/gtest.h>

#include <deque>

namespace quillbox {
namespace {

/// Keeps the jobs for the test.
class HeldJobs : public baseapi::Executor {
  public:
    void post(std::function<void()> job) override { jobs.push_back(std::move(job)); }
    void runFirst() {
        const auto job = std::move(jobs.front());
        jobs.pop_front();
        job();
    }
    std::deque<std::function<void()>> jobs;
};

TEST(CountedQueueTest, AQueueIsIdleWhenEveryJobHasRun) {
    const auto inner = std::make_shared<HeldJobs>();
    CountedQueue queue(inner);
    EXPECT_TRUE(queue.idle());
    bool idleInside = true;
    queue.post([&] { idleInside = queue.idle(); });
    queue.post([] {});
    EXPECT_FALSE(queue.idle());
    inner->runFirst();
    EXPECT_FALSE(idleInside);
    EXPECT_FALSE(queue.idle());
    inner->runFirst();
    EXPECT_TRUE(queue.idle());
}

TEST(CountedQueueTest, AJobThatThrowsOrNeverRunsIsNotWaitedFor) {
    const auto inner = std::make_shared<HeldJobs>();
    CountedQueue queue(inner);
    queue.post([] { throw 1; });
    queue.post([] {});
    EXPECT_THROW(inner->runFirst(), int);
    inner->jobs.clear();
    EXPECT_TRUE(queue.idle());
}

}  // namespace
}  // namespace quillbox
