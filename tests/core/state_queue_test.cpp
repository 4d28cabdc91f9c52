#include "baseapi/core/state_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

#include "tests/support/event.h"

namespace baseapi {
namespace {

TEST(StateQueue, LetsReadersRunTogether) {
    StateQueue queue("com.example.state");
    EXPECT_EQ(queue.label(), "com.example.state");
    std::barrier together(2);  // ends only when both readers are inside
    std::thread other([&] { queue.read([&] { together.arrive_and_wait(); }); });
    queue.read([&] { together.arrive_and_wait(); });
    other.join();
}

TEST(StateQueue, LetsAWriterRunAlone) {
    StateQueue queue("com.example.state");
    int value = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 500; ++n) {
                queue.write([&] { ++value; });
                EXPECT_GE(queue.read([&] { return value; }), 1);
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(queue.read([&] { return value; }), 2000);
}

TEST(StateQueue, HoldsAWriterBackWhileAReaderIsInside) {
    StateQueue queue("com.example.state");
    std::atomic<bool> written = false;
    test_support::Event inside;
    std::thread writer;
    queue.read([&] {
        writer = std::thread([&] {
            inside.set();
            queue.write([&] { written = true; });
        });
        ASSERT_TRUE(inside.wait());
        EXPECT_FALSE(written);
    });
    writer.join();
    EXPECT_TRUE(written);
}

}  // namespace
}  // namespace baseapi
