#include "baseapi/net/query_text.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace baseapi {
namespace {

TEST(QueryText, IsEmptyWithoutParts) {
    EXPECT_EQ(QueryText().text(), "");
}

TEST(QueryText, JoinsItsPartsInTheirOrder) {
    EXPECT_EQ(QueryText().add("b", "1").add("a", "2").add("c", true).add("d", false).text(),
              "b=1&a=2&c=true&d=false");
}

TEST(QueryText, WritesNumbersInDecimal) {
    EXPECT_EQ(QueryText().add("a", std::int64_t{-1}).add("b", std::int64_t{9007199254740993}).text(),
              "a=-1&b=9007199254740993");
}

TEST(QueryText, EscapesNothing) {
    EXPECT_EQ(QueryText().add("a", "x y&é%").text(), "a=x y&é%");
}

TEST(QueryText, LeavesOutWhatIsAbsent) {
    EXPECT_EQ(QueryText().addIfPresent("a", std::nullopt).addIfPresent("b", "").addIfPresent("c", "1").text(),
              "b=&c=1");
}

TEST(QueryText, LeavesOutWhatIsNotFilled) {
    EXPECT_EQ(QueryText().addIfFilled("a", std::nullopt).addIfFilled("b", "").addIfFilled("c", "1").text(),
              "c=1");
}

TEST(QueryText, LeavesOutZero) {
    EXPECT_EQ(QueryText().addIfNotZero("a", 0).addIfNotZero("b", -1).addIfNotZero("c", 100).text(),
              "b=-1&c=100");
}

}  // namespace
}  // namespace baseapi
