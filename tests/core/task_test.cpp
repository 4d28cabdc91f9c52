#include "baseapi/core/task.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "baseapi/core/background.h"
#include "tests/support/event.h"
#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using test_support::Event;
using testing::ElementsAre;

using Numbers = std::function<void(int)>;

Task<int> awaitBoth(std::function<void(Numbers)> start) {
    const int first = co_await callbackOf<int>([&](Numbers callback) { start(std::move(callback)); });
    const int second = co_await callbackOf<int>([&](Numbers callback) { start(std::move(callback)); });
    co_return first + second;
}

Detached store(std::function<void(Numbers)> start, std::vector<int>& sums, Event& stored) {
    sums.push_back(co_await awaitBoth(start));
    stored.set();
}

TEST(Task, GoesOnInPlaceWhereTheCallbackComesBeforeTheCallReturns) {
    std::vector<int> sums;
    Event stored;
    store([](const Numbers& callback) { callback(2); }, sums, stored);
    EXPECT_THAT(sums, ElementsAre(4));
}

TEST(Task, GoesOnOnTheThreadOfTheCallback) {
    std::vector<int> sums;
    Event stored;
    store([](Numbers callback) { inBackground([callback = std::move(callback)] { callback(3); }); }, sums,
          stored);
    ASSERT_TRUE(stored.wait());
    EXPECT_THAT(sums, ElementsAre(6));
}

TEST(Task, RunsAsDeepAsItMayWithoutAStackThatGrows) {
    const auto run = [](std::vector<int>& sums) -> Detached {
        int sum = 0;
        for (int i = 0; i < 100'000; ++i)
            sum += co_await callbackOf<int>([](const Numbers& callback) { callback(1); });
        sums.push_back(sum);
    };
    std::vector<int> sums;
    run(sums);
    EXPECT_THAT(sums, ElementsAre(100'000));
}

Task<int> fail() {
    throw std::runtime_error("from below");
    co_return 0;
}

Detached catchBelow(std::string& caught) {
    try {
        co_await fail();
    } catch (const std::runtime_error& error) {
        caught = error.what();
    }
}

TEST(Task, HandsOnWhatItThrows) {
    std::string caught;
    catchBelow(caught);
    EXPECT_EQ(caught, "from below");
}

Detached failAlone() {
    co_await fail();
}

TEST(Task, LogsWhatADetachedOneThrows) {
    test_support::recordingLog().clear();
    failAlone();
    EXPECT_TRUE(test_support::recordingLog().contains("callback threw: from below"));
}

Detached keep(std::shared_ptr<int> value, Numbers& kept) {
    co_await callbackOf<int>([&](Numbers callback) { kept = std::move(callback); });
    EXPECT_EQ(*value, 7);
}

TEST(Task, KeepsWhatItHoldsUntilItsEnd) {
    auto value = std::make_shared<int>(7);
    const std::weak_ptr<int> watched = value;
    Numbers kept;
    keep(std::move(value), kept);
    EXPECT_FALSE(watched.expired());
    kept(0);
    EXPECT_TRUE(watched.expired());
}

Detached goOnInBackground(std::thread::id& thread, Event& arrived) {
    co_await background();
    thread = std::this_thread::get_id();
    arrived.set();
}

TEST(Background, ACoroutineGoesOnOnAnotherThread) {
    std::thread::id thread;
    Event arrived;
    goOnInBackground(thread, arrived);
    ASSERT_TRUE(arrived.wait());
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(Background, AJobMayWaitForALaterOne) {
    Event later;
    Event done;
    inBackground([&] {
        EXPECT_TRUE(later.wait());
        done.set();
    });
    inBackground([&] { later.set(); });
    EXPECT_TRUE(done.wait());
}

}  // namespace
}  // namespace baseapi
