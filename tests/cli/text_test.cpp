#include "cli/text.h"

#include <gtest/gtest.h>

#include <clocale>

namespace quillbox {
namespace {

class TextTest : public testing::Test {
  protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};

TEST_F(TextTest, ValidTextStaysAsItIs) {
    for (const auto* text : {"", "abc", "中文", "😀", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(repairUtf8(text), text);
        EXPECT_TRUE(isUtf8(text));
    }
}

TEST_F(TextTest, EachByteThatIsNoUtf8BecomesOneReplacementCharacter) {
    EXPECT_EQ(repairUtf8("a\xff"
                         "b"),
              "a\uFFFDb");
    EXPECT_EQ(repairUtf8("\xe4\xb8"), "\uFFFD\uFFFD") << "cut off";
    EXPECT_EQ(repairUtf8("\xc0\xaf"), "\uFFFD\uFFFD") << "too long a form";
    EXPECT_EQ(repairUtf8("\xed\xa0\x80"), "\uFFFD\uFFFD\uFFFD") << "half of a pair";
    EXPECT_EQ(repairUtf8("\xf4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond the last character";
    EXPECT_FALSE(isUtf8("\xff"));
}

TEST_F(TextTest, WhatWouldMoveATerminalIsSpelledOut) {
    EXPECT_EQ(harmless("a\nb\r\tc"), "a\\nb\\r\\tc");
    EXPECT_EQ(harmless("\x1b[31mred"), "\\x1b[31mred");
    EXPECT_EQ(harmless("\u009b"), "\\x9b") << "a control character of two bytes";
    EXPECT_EQ(harmless("gpj.\u202Eexe"), "gpj.\\u202eexe") << "a turned direction";
    EXPECT_EQ(harmless("中文 é"), "中文 é");
}

TEST_F(TextTest, WideCharactersTakeTwoColumns) {
    EXPECT_EQ(columns("abc"), 3U);
    EXPECT_EQ(columns("中文"), 4U);
    EXPECT_EQ(columns("e\u0301"), 1U) << "a mark that stands on the character before it";
}

TEST_F(TextTest, ALongTextLosesItsMiddle) {
    EXPECT_EQ(shortened("abcdefghij", 10), "abcdefghij");
    EXPECT_EQ(shortened("abcdefghij", 7), "abcd…ij");
    EXPECT_EQ(shortened("abc", 0), "");
    for (std::size_t width = 1; width < 12; ++width)
        EXPECT_LE(columns(shortened("中文中文中文", width)), width);
}

}  // namespace
}  // namespace quillbox
