#include "baseapi/json/lenient_int64.h"

#include <gtest/gtest.h>

#include "tests/json/reading.h"

namespace baseapi::sample {
namespace {

std::int64_t read(const std::string& deviceId) {
    return readWell<Device>("{\"deviceId\":" + deviceId + ",\"createTime\":\"t\"}").deviceId.value;
}

TEST(LenientInt64, TakesANumberAndAText) {
    EXPECT_EQ(read("123"), 123);
    EXPECT_EQ(read("-1"), -1);
    EXPECT_EQ(read("2.0"), 2);
    EXPECT_EQ(read(R"("123")"), 123);
    EXPECT_EQ(read(R"("-123")"), -123);
    EXPECT_EQ(read(R"("+7")"), 7);
    EXPECT_EQ(read(R"("\u0031")"), 1);
    EXPECT_EQ(read(R"("9223372036854775807")"), 9223372036854775807);
}

TEST(LenientInt64, IsZeroForAnythingElse) {
    for (const char* value :
         {R"("abc")", R"("")", R"("1.0")", R"(" 1")", R"("1 ")", R"("0x1")", R"("--1")", R"("+-1")",
          R"("9223372036854775808")", "1.5", "1e400", "null", "true", "[1]", R"({"a":1})"}) {
        EXPECT_EQ(read(value), 0) << value;
    }
    EXPECT_EQ(readWell<Device>(R"({"createTime":"t"})").deviceId.value, 0);
}

TEST(LenientInt64, LeavesTheOtherFieldsOfItsRecordStrict) {
    EXPECT_EQ(readBadly<Device>(R"({"deviceId":1})").subject, "createTime");
}

TEST(LenientInt64, StillFailsWhereTheTextIsBroken) {
    EXPECT_EQ(readBadly<Device>(R"({"deviceId":01,"createTime":"t"})").kind, Kind::dataCorrupted);
    EXPECT_EQ(readBadly<Device>(R"({"deviceId":[},"createTime":"t"})").kind, Kind::dataCorrupted);
}

TEST(LenientInt64, IsWrittenAsANumber) {
    EXPECT_EQ(encode(Device{{5}, "t"}), R"({"deviceId":5,"createTime":"t"})");
}

}  // namespace
}  // namespace baseapi::sample
