#include "cli/job_progress.h"

#include <gtest/gtest.h>

namespace quillbox {
namespace {

using namespace std::chrono_literals;

class JobProgressTest : public testing::Test {
  protected:
    JobProgress::View viewAfter(std::chrono::milliseconds time) {
        return job_.view(JobProgress::Clock::time_point(time));
    }
    std::int64_t done() { return viewAfter(now_ += 1ms).done; }

    JobProgress job_{1000};
    std::chrono::milliseconds now_{0};
};

TEST_F(JobProgressTest, FilesAddUp) {
    job_.begin("a", 400);
    job_.sent(100);
    EXPECT_EQ(done(), 100);
    job_.end(true);
    job_.begin("b", 600);
    EXPECT_EQ(done(), 400);
    job_.sent(600);
    EXPECT_EQ(done(), 1000);
    EXPECT_EQ(viewAfter(9ms).label, "b");
}

TEST_F(JobProgressTest, HashingStandsBesideTheLabelAlone) {
    job_.begin("a", 400);
    job_.hashed(100);
    EXPECT_EQ(viewAfter(1ms).label, "a (hashing, 25 %)");
    EXPECT_EQ(done(), 0);
    job_.hashed(400);
    EXPECT_EQ(viewAfter(3ms).label, "a");
    job_.begin("b", 600);
    EXPECT_EQ(viewAfter(4ms).label, "b");
}

TEST_F(JobProgressTest, AFileThatNeededNoSendingIsDoneInFull) {
    job_.begin("a", 400);
    job_.end(true);
    EXPECT_EQ(done(), 400);
}

TEST_F(JobProgressTest, AFailedPartDoesNotCount) {
    job_.begin("a", 1000);
    job_.sent(300);
    job_.partFailed(200);
    job_.sent(700);  // the failed part's 200 among them
    EXPECT_EQ(done(), 500);
}

TEST_F(JobProgressTest, WhatIsShownNeverFallsBack) {
    job_.begin("a", 1000);
    job_.sent(300);
    EXPECT_EQ(done(), 300);
    job_.partFailed(200);
    EXPECT_EQ(done(), 300);
    job_.end(false);
    job_.begin("a", 1000);
    job_.sent(50);
    EXPECT_EQ(done(), 300);
    job_.sent(350);
    EXPECT_EQ(done(), 350);
}

TEST_F(JobProgressTest, AFailedFileNeverCountsAsDone) {
    job_.begin("a", 400);
    job_.sent(400);
    job_.partFailed(400);
    job_.end(false);
    job_.begin("b", 600);
    job_.end(true);
    EXPECT_EQ(done(), 600);
}

TEST_F(JobProgressTest, WhatIsShownNeverPassesTheWhole) {
    job_.begin("a", 1000);
    job_.sent(5000);
    EXPECT_EQ(done(), 1000);
    job_.end(true);
    job_.begin("b, which was empty when it was counted", 0);
    job_.sent(77);
    EXPECT_EQ(done(), 1000);
}

TEST_F(JobProgressTest, RateAndTimeLeftComeFromTheLastSeconds) {
    job_.begin("a", 1000);
    EXPECT_FALSE(viewAfter(0ms).rate);
    job_.sent(100);
    const auto view = viewAfter(1000ms);
    EXPECT_DOUBLE_EQ(view.rate.value(), 100);
    EXPECT_EQ(view.left.value(), 9s);
    viewAfter(5000ms);
    viewAfter(10'000ms);
    EXPECT_DOUBLE_EQ(viewAfter(15'000ms).rate.value(), 0) << "nothing has moved for long";
    EXPECT_FALSE(viewAfter(15'001ms).left);
}

}  // namespace
}  // namespace quillbox
