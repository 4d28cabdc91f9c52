#include "cli/retry.h"

#include <gtest/gtest.h>

namespace quillbox {
namespace {

using namespace std::chrono_literals;

TEST(RetryDelay, TheWaitGrowsToHalfAMinute) {
    EXPECT_EQ(retryDelay(1, 0), 500ms);
    EXPECT_EQ(retryDelay(2, 0), 1000ms);
    EXPECT_EQ(retryDelay(3, 0), 2000ms);
    EXPECT_EQ(retryDelay(7, 0), 30'000ms);
    EXPECT_EQ(retryDelay(1'000'000, 0), 30'000ms);
}

TEST(RetryDelay, LuckTakesUpToHalfOfItAway) {
    EXPECT_EQ(retryDelay(1, 1), 250ms);
    EXPECT_EQ(retryDelay(2, 0.5), 750ms);
}

}  // namespace
}  // namespace quillbox
