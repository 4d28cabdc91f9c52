#include "cli/quantity.h"

#include <gtest/gtest.h>

namespace quillbox {
namespace {

TEST(ByteText, BytesStandInTheUnitThatFits) {
    EXPECT_EQ(byteText(0), "0 B");
    EXPECT_EQ(byteText(999), "999 B");
    EXPECT_EQ(byteText(1000), "1.0 kB");
    EXPECT_EQ(byteText(999'949), "999.9 kB");
    EXPECT_EQ(byteText(999'999), "1.0 MB");
    EXPECT_EQ(byteText(9.2e18), "9.2 EB");
}

TEST(TimeText, HoursStandOnlyWhereThereAreAny) {
    using namespace std::chrono_literals;
    EXPECT_EQ(timeText(7s), "0:07");
    EXPECT_EQ(timeText(3599s), "59:59");
    EXPECT_EQ(timeText(3723s), "1:02:03");
}

TEST(CountText, OneHasNoPlural) {
    EXPECT_EQ(countText(1, "file"), "1 file");
    EXPECT_EQ(countText(0, "file"), "0 files");
}

}  // namespace
}  // namespace quillbox
