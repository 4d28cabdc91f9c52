#include "quillboxd/store/time_text.h"

#include <gtest/gtest.h>

namespace quillboxd_test {
namespace {

using quillboxd::normalisedTime;
using quillboxd::timeText;
using std::chrono::milliseconds;
using std::chrono::system_clock;

TEST(TimeTextTest, ATimeIsWrittenToTheMillisecond) {
    EXPECT_EQ(timeText(system_clock::from_time_t(0) + milliseconds(1'767'323'045'678)),
              "2026-01-02T03:04:05.678Z");
    EXPECT_EQ(timeText(system_clock::from_time_t(0) - milliseconds(1)), "1969-12-31T23:59:59.999Z");
}

TEST(TimeTextTest, ATimeIsReadWithAndWithoutMilliseconds) {
    EXPECT_EQ(normalisedTime("2026-01-02T03:04:05.678Z"), "2026-01-02T03:04:05.678Z");
    EXPECT_EQ(normalisedTime("2026-01-02T03:04:05Z"), "2026-01-02T03:04:05.000Z");
}

TEST(TimeTextTest, WhatIsNoTimeIsNotRead) {
    for (const auto* text : {"", "tomorrow", "2026-01-02", "2026-02-30T03:04:05Z", "2026-01-02T24:04:05Z",
                             "2026-01-02 03:04:05Z", "2026-01-02T03:04:05.67Z", "2026-01-02T03:04:05.x78Z",
                             "2026-01-02T03:04:05+0100", " 026-01-02T03:04:05Z", "9999-12-31T23:59:59Z"}) {
        EXPECT_EQ(normalisedTime(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quillboxd_test
