#include "cli/monitor.h"

#include <gtest/gtest.h>

#include <thread>

namespace quillbox {
namespace {

using namespace std::chrono_literals;

TEST(Monitor, AWaitEndsWhenWhatItWaitsForHasCome) {
    Monitor monitor;
    bool come = false;
    std::thread other([&] { monitor.change([&] { come = true; }); });
    EXPECT_TRUE(monitor.wait([&] { return come; }));
    other.join();
}

TEST(Monitor, AWaitEndsAtItsLimit) {
    Monitor monitor;
    EXPECT_FALSE(monitor.wait([] { return false; }, Monitor::Clock::now() + 1ms));
}

TEST(Monitor, AfterAnInterruptionWhatComesIsStillWaitedFor) {
    Monitor monitor;
    bool come = false;
    monitor.interrupt();
    std::thread other([&] { monitor.change([&] { come = true; }); });
    EXPECT_TRUE(monitor.wait([&] { return come; }));
    other.join();
    EXPECT_TRUE(monitor.interrupted());
}

TEST(Monitor, AfterAnInterruptionThePatienceHasAnEnd) {
    Monitor monitor(10ms);
    std::thread other([&] { monitor.interrupt(); });
    EXPECT_FALSE(monitor.wait([] { return false; }));
    other.join();
}

TEST(Monitor, AnInterruptionEndsASleep) {
    Monitor monitor;
    std::thread other([&] { monitor.interrupt(); });
    EXPECT_FALSE(monitor.sleepUntil(Monitor::Clock::now() + 1h));
    other.join();
    Monitor undisturbed;
    EXPECT_TRUE(undisturbed.sleepUntil(Monitor::Clock::now() + 1ms));
}

}  // namespace
}  // namespace quillbox
