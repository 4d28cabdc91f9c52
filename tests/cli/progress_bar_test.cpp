#include "cli/progress_bar.h"

#include <gtest/gtest.h>

#include <clocale>

#include "cli/text.h"

namespace quillbox {
namespace {

using namespace std::chrono_literals;

class BarText : public testing::Test {
  protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    JobProgress::View view_{"report.pdf", 250'000, 1'000'000, JobProgress::Unit::bytes, 125'000.0, 6s};
};

TEST_F(BarText, ALineShowsNameShareBytesRateAndTimeLeft) {
    EXPECT_EQ(barText(view_, 100),
              "report.pdf  ██████░░░░░░░░░░░░░░░░░░  25 %  250.0 kB of 1.0 MB  125.0 kB/s  0:06 left");
}

TEST_F(BarText, NoLineIsWiderThanTheTerminal) {
    view_.label = "中文中文中文中文中文中文中文中文中文中文中文中文中文中文中文中文中文中文";
    for (std::size_t width = 0; width < 150; ++width) EXPECT_LE(columns(barText(view_, width)), width);
}

TEST_F(BarText, ANameThatWouldMoveTheTerminalDoesNot) {
    view_.label = "a\x1b[2Jb\n";
    EXPECT_EQ(barText(view_, 120).substr(0, 12), "a\\x1b[2Jb\\n ");
}

TEST_F(BarText, AJobOfUnknownSizeShowsItsShareAlone) {
    const JobProgress::View view{"x", 500'000,     JobProgress::allShares, JobProgress::Unit::shares,
                                 1.0, std::nullopt};
    EXPECT_EQ(barText(view, 100), "x  ████████████░░░░░░░░░░░░  50 %");
}

TEST_F(BarText, AJobWithoutBytesIsAtZero) {
    const JobProgress::View view{"empty", 0, 0, JobProgress::Unit::bytes, std::nullopt, std::nullopt};
    EXPECT_EQ(barText(view, 100), "empty  ░░░░░░░░░░░░░░░░░░░░░░░░  0 %  0 B of 0 B");
}

}  // namespace
}  // namespace quillbox
