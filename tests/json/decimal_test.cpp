#include "baseapi/json/decimal.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace baseapi::json {
namespace {

template <class Number>
std::string written(Number number) {
    std::array<char, longestDecimal> text{};
    return {text.data(), putDecimal(text.data(), number)};
}

TEST(Decimal, WritesNumbersOfEveryLength) {
    std::int64_t number = 0;
    for (int digit = 1; digit < 19; ++digit) {
        number = number * 10 + digit % 10;
        for (const std::int64_t each : {number, -number, number * 10 - 1})
            EXPECT_EQ(written(each), std::to_string(each));
    }
    for (std::int64_t power = 1; power <= std::numeric_limits<std::int64_t>::max() / 10; power *= 10) {
        for (const std::int64_t each : {power - 1, power, power + 1})
            EXPECT_EQ(written(each), std::to_string(each));
    }
}

TEST(Decimal, WritesTheEndsOfTheTypes) {
    EXPECT_EQ(written(std::int64_t{0}), "0");
    EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(written(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(written(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(written(std::numeric_limits<std::uint32_t>::max()), "4294967295");
}

TEST(Decimal, WritesEveryNumberOfUpToFiveDigits) {
    for (std::uint32_t number = 0; number < 100'000; ++number)
        ASSERT_EQ(written(number), std::to_string(number));
}

}  // namespace
}  // namespace baseapi::json
