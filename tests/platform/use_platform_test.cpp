#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "baseapi/platform/platform.h"
#include "tests/support/event.h"

namespace baseapi {
namespace {

// Each statement runs in a process of its own, where nothing of the library was used before.
class UsePlatformDeathTest : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

/// Ends the process, as well as every expectation before went.
[[noreturn]] void end() {
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

const testing::ExitedWithCode kWell(0);

TEST_F(UsePlatformDeathTest, FillsWhatTheHostLeavesEmpty) {
    EXPECT_EXIT(
        {
            ::setenv("XDG_STATE_HOME", "/state", 1);
            ::setenv("TMPDIR", "/temporary", 1);
            const auto& parts = platform();
            EXPECT_TRUE(parts.http && parts.store && parts.log && parts.mainQueue);
            EXPECT_EQ(parts.stateFolder, "/state/baseapi");
            EXPECT_EQ(parts.temporaryFolder, "/temporary");
            EXPECT_FALSE(parts.applicationIdentifier);
            EXPECT_EQ(&platform(), &parts);
            end();
        },
        kWell, "");
}

TEST_F(UsePlatformDeathTest, LooksInTheHomeFolderForARelativeStateFolderAndInTmpWithoutTmpdir) {
    EXPECT_EXIT(
        {
            ::setenv("XDG_STATE_HOME", "relative", 1);
            ::setenv("HOME", "/home/somebody", 1);
            ::unsetenv("TMPDIR");
            EXPECT_EQ(platform().stateFolder, "/home/somebody/.local/state/baseapi");
            EXPECT_EQ(platform().temporaryFolder, "/tmp");
            end();
        },
        kWell, "");
}

TEST_F(UsePlatformDeathTest, KeepsThePartsOfTheHost) {
    class SilentLog : public LogSink {
        void line(std::span<const std::string_view>) noexcept override {}
    };
    EXPECT_EXIT(
        {
            const auto log = std::make_shared<SilentLog>();
            usePlatform({.log = log, .temporaryFolder = "/elsewhere", .applicationIdentifier = "app"});
            EXPECT_EQ(platform().log, log);
            EXPECT_EQ(platform().temporaryFolder, "/elsewhere");
            EXPECT_EQ(platform().applicationIdentifier, "app");
            EXPECT_TRUE(platform().http);
            end();
        },
        kWell, "");
}

TEST_F(UsePlatformDeathTest, HasAMainQueueThatRunsJobs) {
    EXPECT_EXIT(
        {
            test_support::Event ran;
            platform().mainQueue->post([&] { ran.set(); });
            EXPECT_TRUE(ran.wait());
            end();
        },
        kWell, "");
}

TEST_F(UsePlatformDeathTest, EndsTheProcessWhereItComesTooLate) {
    EXPECT_EXIT(
        {
            platform();
            usePlatform({});
        },
        testing::KilledBySignal(SIGABRT), "fatal stop: usePlatform");
    EXPECT_EXIT(
        {
            usePlatform({});
            usePlatform({});
        },
        testing::KilledBySignal(SIGABRT), "fatal stop: usePlatform");
}

}  // namespace
}  // namespace baseapi
