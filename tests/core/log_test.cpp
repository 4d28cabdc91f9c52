#include "baseapi/core/log.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>

#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using testing::ElementsAre;

TEST(Log, HandsOverALineOfTextsNumbersAndBooleans) {
    test_support::recordingLog().clear();
    const std::string text = "text";
    logLine("a ", text, std::string_view(", "), -5, ", ", std::int64_t{1} << 62, ", ", std::size_t{7}, ", ",
            true, ", ", false, ", ", 0.5);
    EXPECT_THAT(test_support::recordingLog().lines(),
                ElementsAre("a text, -5, 4611686018427387904, 7, true, false, 0.5"));
}

TEST(Log, WritesTheExtremesOfNumbers) {
    test_support::recordingLog().clear();
    logLine(std::numeric_limits<std::int64_t>::min(), " ", std::numeric_limits<double>::lowest(), " ",
            std::numeric_limits<double>::infinity());
    EXPECT_THAT(test_support::recordingLog().lines(),
                ElementsAre("-9223372036854775808 -1.7976931348623157e+308 inf"));
}

TEST(Log, TakesAnEmptyLineAndEmptyPieces) {
    test_support::recordingLog().clear();
    logLine("");
    logLine("", "x", "");
    EXPECT_THAT(test_support::recordingLog().lines(), ElementsAre("", "x"));
}

}  // namespace
}  // namespace baseapi
