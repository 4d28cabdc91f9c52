#include "baseapi/json/utf8.h"

#include <gtest/gtest.h>

namespace baseapi {
namespace {

TEST(UTF8, TakesText) {
    for (const auto* text : {"", "plain", "h\xc3\xa9", "\xe4\xb8\xad\xe6\x96\x87", "\xf0\x9f\x98\x80"})
        EXPECT_TRUE(isValidUTF8(text)) << text;
    EXPECT_TRUE(isValidUTF8(std::string_view("\0", 1)));
}

TEST(UTF8, RefusesWhatIsNoText) {
    // A lone byte, a lone surrogate, a form that is too long, a beginning without its end, a number too
    // large.
    for (const auto* bytes : {"\xff", "\x80", "\xed\xa0\x80", "\xc0\xaf", "a\xc3", "\xf5\x80\x80\x80"})
        EXPECT_FALSE(isValidUTF8(bytes));
}

}  // namespace
}  // namespace baseapi
