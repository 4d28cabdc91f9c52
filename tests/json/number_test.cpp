#include "baseapi/json/number.h"

#include <gtest/gtest.h>

#include <limits>

namespace baseapi::json {
namespace {

TEST(Number, KnowsTheGrammar) {
    for (const char* text :
         {"0", "-0", "10", "-1.5", "0.0", "1e5", "1E+5", "1.25e-10", "123456789012345678901234567890"}) {
        EXPECT_TRUE(isNumber(text)) << text;
    }
    for (const char* text : {"", "-", "+1", "01", "-01", "1.", ".5", "1e", "1e+", "1e5.5", "0x1", "1 ", " 1",
                             "--1", "Infinity"}) {
        EXPECT_FALSE(isNumber(text)) << text;
    }
}

TEST(Number, FindsTheExactInteger) {
    EXPECT_EQ(exactInteger("12"), 12);
    EXPECT_EQ(exactInteger("-12.000"), -12);
    EXPECT_EQ(exactInteger("0.00"), 0);
    EXPECT_EQ(exactInteger("0e999999999999999999999"), 0);
    EXPECT_EQ(exactInteger("1.25e2"), 125);
    EXPECT_EQ(exactInteger("0.001e3"), 1);
    EXPECT_EQ(exactInteger("100e-2"), 1);
    EXPECT_EQ(exactInteger("1e18"), 1'000'000'000'000'000'000);
    EXPECT_EQ(exactInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(exactInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(exactInteger("0.9223372036854775807e19"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(exactInteger("9007199254740993"), 9007199254740993) << "beyond what a double holds";
    EXPECT_EQ(exactInteger("1" + std::string(400, '0') + "e-400"), 1);
}

TEST(Number, FindsNoIntegerWhereThereIsNone) {
    for (const char* text :
         {"1.5", "1e-1", "9223372036854775808", "-9223372036854775809", "1e19", "1e400",
          "1e99999999999999999999", "1e-99999999999999999999", "9007199254740993.5", "x"}) {
        EXPECT_FALSE(exactInteger(text)) << text;
    }
}

}  // namespace
}  // namespace baseapi::json
