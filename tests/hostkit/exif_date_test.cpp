#include "hostkit/exif_date.h"

#include <gtest/gtest.h>
#include <stdlib.h>

namespace {

using hostkit::Instant;
using hostkit::readExifDate;
using namespace std::chrono_literals;

/// Seconds since 1970.
std::optional<std::int64_t> secondOf(const std::string& date, const std::string& offset = "Z") {
    const auto instant = readExifDate(date, "", offset);
    if (!instant) return std::nullopt;
    return instant->second.time_since_epoch().count();
}

TEST(ExifDate, IsReadWithItsOffsetFromUtc) {
    EXPECT_EQ(secondOf("1970:01:01 00:00:00"), 0);
    EXPECT_EQ(secondOf("2020:01:02 03:04:05"), 1577934245);
    EXPECT_EQ(secondOf("2020:01:02 03:04:05", "+00:00"), 1577934245);
    EXPECT_EQ(secondOf("2020:01:02 03:04:05", "+08:00"), 1577934245 - 8 * 3600);
    EXPECT_EQ(secondOf("2020:01:02 03:04:05", "-03:30"), 1577934245 + 3 * 3600 + 1800);
}

TEST(ExifDate, IsLocalTimeWithoutAnOffset) {
    ASSERT_EQ(::setenv("TZ", "EST5EDT,M3.2.0,M11.1.0", 1), 0);
    for (const auto* none : {"", "   :  ", "local", "+99:99"}) {
        EXPECT_EQ(secondOf("2020:01:02 03:04:05", none), 1577934245 + 5 * 3600) << none;
        EXPECT_EQ(secondOf("2020:07:02 03:04:05", none), 1593659045 + 4 * 3600) << none;
    }
}

TEST(ExifDate, HasTheFractionOfTheSecondAsDigitsBehindThePoint) {
    const auto fractionOf = [](const std::string& digits) {
        return readExifDate("2020:01:02 03:04:05", digits, "Z")->fraction;
    };
    EXPECT_EQ(fractionOf("25"), 250ms);
    EXPECT_EQ(fractionOf("025"), 25ms);
    EXPECT_EQ(fractionOf("5   "), 500ms);
    EXPECT_EQ(fractionOf("123456789999"), 123456789ns);
    EXPECT_EQ(fractionOf(""), 0ns);
    EXPECT_EQ(fractionOf("   "), 0ns);
    EXPECT_EQ(fractionOf("-1"), 0ns);
}

TEST(ExifDate, HasRoomForEveryYear) {
    EXPECT_EQ(secondOf("9999:12:31 23:59:59"), 253402300799);
    EXPECT_EQ(secondOf("0001:01:01 00:00:00"), -62135596800);
    EXPECT_EQ(secondOf("1600:02:29 00:00:00"), -11670998400);
}

TEST(ExifDate, IsAbsentForWhatIsNoDayOrTimeOfDay) {
    for (const auto* broken :
         {"", " ", "    :  :     :  :  ", "0000:00:00 00:00:00", "2020:13:01 00:00:00", "2020:02:30 00:00:00",
          "2019:02:29 00:00:00", "2020:01:00 00:00:00", "2020:01:01 24:00:00", "2020:01:01 00:60:00",
          "2020:01:01", "2020:01:01 10:20", "yesterday", "-001:01:01 00:00:00"})
        EXPECT_EQ(readExifDate(broken, "", "Z"), std::nullopt) << broken;
}

TEST(ExifDate, OrdersByTheFractionLast) {
    EXPECT_LT(*readExifDate("2020:01:02 03:04:05", "9", "Z"), *readExifDate("2020:01:02 03:04:06", "", "Z"));
    EXPECT_LT(*readExifDate("2020:01:02 03:04:05", "09", "Z"),
              *readExifDate("2020:01:02 03:04:05", "1", "Z"));
}

}  // namespace
