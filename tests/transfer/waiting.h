#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>

#include "baseapi/core/main_queue.h"
#include "baseapi/platform/http_transport.h"
#include "baseapi/platform/platform.h"
#include "tests/support/event.h"
#include "tests/support/test_platform.h"

namespace baseapi {

/// False where it does not come to that in time. For what nobody tells of; what is told of has its event.
[[nodiscard]] inline bool eventually(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + test_support::kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::yield();
    }
    return true;
}

/// Returns when all that the main queue had to do before has been done.
inline void drainMainQueue() {
    test_support::Event drained;
    onMainQueue([&] { drained.set(); });
    EXPECT_TRUE(drained.wait());
}

/// Returns when no transfer is under way and no end of one is still on its way to somebody.
inline void waitForQuiet() {
    do {
        EXPECT_TRUE(test_support::transfersEnd());
        drainMainQueue();  // which may begin another
    } while (platform().http->running() > 0 && !testing::Test::HasFailure());
}

}  // namespace baseapi
