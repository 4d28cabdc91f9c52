#include "baseapi/backup/timed_answer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "baseapi/core/background.h"
#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using namespace std::chrono_literals;
using test_support::testWaitClock;

using Texts = std::function<void(std::string)>;

TEST(TimedAnswer, IsTheOneThatComesBeforeTheCallReturns) {
    EXPECT_EQ(timedAnswer<std::string>(1s, [](const Texts& callback) { callback("at once"); }), "at once");
}

TEST(TimedAnswer, IsTheOneThatComesFromAnotherThread) {
    const auto answer = timedAnswer<std::string>(1s, [](Texts callback) {
        inBackground([callback = std::move(callback)] {
            EXPECT_TRUE(testWaitClock().awaitWaiting());
            callback("later");
        });
    });
    EXPECT_EQ(answer, "later");
}

TEST(TimedAnswer, IsTheFirstOfSeveral) {
    EXPECT_EQ(timedAnswer<std::string>(1s,
                                       [](const Texts& callback) {
                                           callback("first");
                                           callback("second");
                                       }),
              "first");
}

TEST(TimedAnswer, IsNoneWhereTheLimitPasses) {
    Texts late;
    std::thread time([] {
        ASSERT_TRUE(testWaitClock().awaitWaiting());
        EXPECT_EQ(testWaitClock().lastLimit(), 3s);
        testWaitClock().expire();
    });
    EXPECT_EQ(timedAnswer<std::string>(3s, [&](Texts callback) { late = std::move(callback); }),
              std::nullopt);
    time.join();
    late("nobody reads it");
}

TEST(TimedAnswer, TakesWhatCannotBeCopied) {
    const auto answer = timedAnswer<std::unique_ptr<int>>(
        1s, [](const auto& callback) { callback(std::make_unique<int>(7)); });
    ASSERT_TRUE(answer);
    EXPECT_EQ(**answer, 7);
}

TEST(SteadyWaitClock, WaitsNoLongerThanItsLimit) {
    std::mutex mutex;
    std::condition_variable changed;
    std::unique_lock lock(mutex);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(SteadyWaitClock().wait(lock, changed, 20ms, [] { return false; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 20ms);
    EXPECT_TRUE(SteadyWaitClock().wait(lock, changed, 1h, [] { return true; }));
}

}  // namespace
}  // namespace baseapi
