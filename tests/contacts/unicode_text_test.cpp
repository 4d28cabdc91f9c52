#include "baseapi/contacts/unicode_text.h"

#include <gtest/gtest.h>

namespace {

using namespace baseapi;

std::string digits(std::string_view text) {
    std::string all = "x";
    appendDecimalDigits(text, all);
    return all.substr(1);
}

TEST(UnicodeTextTest, LettersOfAllScriptsHaveACase) {
    EXPECT_EQ(lowerCased("Jane DOE-1"), "jane doe-1");
    EXPECT_EQ(lowerCased("ÄRGER Ωσ ЖУК 李雷"), "ärger ωσ жук 李雷");
    EXPECT_EQ(upperCased("home,Fax é"), "HOME,FAX É");
    EXPECT_EQ(upperCased("work"), "WORK");
    EXPECT_EQ(lowerCased(""), "");
}

TEST(UnicodeTextTest, ACaseMayChangeTheLength) {
    EXPECT_EQ(upperCased("straße"), "STRASSE");
    EXPECT_EQ(lowerCased("ΟΔΟΣ"), "οδος");
    EXPECT_EQ(lowerCased("İ"), "i\u0307");
}

TEST(UnicodeTextTest, BlanksAroundAreBlanksOfAnyWidthAndTabs) {
    EXPECT_EQ(withoutBlanksAround(" \t a b\t "), "a b");
    EXPECT_EQ(withoutBlanksAround("\u00A0\u3000李 雷\u2003\u202F"), "李 雷");
    EXPECT_EQ(withoutBlanksAround("\ra\n"), "\ra\n");
    EXPECT_EQ(withoutBlanksAround(" \t"), "");
    EXPECT_EQ(withoutBlanksAround(""), "");
    EXPECT_EQ(withoutBlanksAround("\u200Ba"), "\u200Ba") << "a zero width space is no blank";
}

TEST(UnicodeTextTest, WhitespaceAroundIsLineEndsToo) {
    EXPECT_EQ(withoutWhitespaceAround("\r\n\v a\n b \u2028\u0085\t"), "a\n b");
    EXPECT_EQ(withoutWhitespaceAround("\n"), "");
}

TEST(UnicodeTextTest, DigitsAreTheDecimalDigitsOfAllScriptsAsTheyStand) {
    EXPECT_EQ(digits("+86 (138) 0000-0000 ext"), "8613800000000");
    EXPECT_EQ(digits("٠١٢ / ３４"), "٠١٢３４");
    EXPECT_EQ(digits("①²Ⅷ一"), "") << "numbers, but no decimal digits";
    EXPECT_EQ(digits(""), "");
}

TEST(UnicodeTextTest, ALineEndsAtSevenLetters) {
    for (const std::string_view end : {"\n", "\v", "\f", "\r", "\u0085", "\u2028", "\u2029"}) {
        const auto text = "李雷" + std::string(end) + "b";
        EXPECT_EQ(findLineEnd(text), 6u);
        EXPECT_EQ(lineEndLength(std::string_view(text).substr(6)), end.size());
    }
    EXPECT_EQ(findLineEnd("\u00A9\u2026\t\u001Cx"), 8u) << "letters that begin alike";
    EXPECT_EQ(lineEndLength("a"), 0u);
    EXPECT_EQ(lineEndLength(""), 0u);
    EXPECT_EQ(findLineEnd(""), 0u);
}

TEST(UnicodeTextTest, BytesThatAreNoLettersDoNoHarm) {
    EXPECT_EQ(withoutBlanksAround("\xff a \xe2\x80"), "\xff a \xe2\x80");
    EXPECT_EQ(digits("1\xff"
                     "2\xc3"),
              "12");
    EXPECT_EQ(findLineEnd("\xe2\x80"), 2u);
    EXPECT_EQ(lowerCased("A\xff"), "a\xff");
}

}  // namespace
