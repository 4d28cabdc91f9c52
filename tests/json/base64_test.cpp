#include "baseapi/json/base64.h"

#include <gtest/gtest.h>

namespace baseapi::json {
namespace {

TEST(Base64, WritesAndReadsBytesOfAnyLength) {
    EXPECT_EQ(toBase64(""), "");
    EXPECT_EQ(toBase64("a"), "YQ==");
    EXPECT_EQ(toBase64("ab"), "YWI=");
    EXPECT_EQ(toBase64("abc"), "YWJj");
    EXPECT_EQ(toBase64("\xFB\xFF"), "+/8=");
    std::string bytes;
    for (int count = 0; count < 300; ++count) {
        EXPECT_EQ(fromBase64(toBase64(bytes)), bytes);
        bytes += static_cast<char>(count);
    }
}

TEST(Base64, JoinsLargePiecesWithoutPadding) {
    const std::string bytes(10'000'000, 'x');
    EXPECT_EQ(fromBase64(toBase64(bytes)), bytes);
}

TEST(Base64, TakesNothingButBase64) {
    for (const char* text : {"Y", "YQ", "YQ=", "YQ===", "====", "=", "YQ=a", "Y=Q=", " YWJj", "YWJj\n",
                             "YW Jj", "YWJ-", "YWJ_", "YWJj="}) {
        EXPECT_FALSE(fromBase64(text)) << text;
    }
}

}  // namespace
}  // namespace baseapi::json
