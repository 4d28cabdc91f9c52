#include "baseapi/contacts/unicode_text.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace {

using namespace baseapi;

std::string lowerCased(std::string_view text) {
    std::string lower;
    appendLowerCased(text, lower);
    return lower;
}

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

TEST(UnicodeTextTest, ChineseAndJapaneseLettersStayAsTheyAre) {
    for (UChar32 letter = 0x3000; letter <= 0x9FFF; ++letter) {
        ASSERT_EQ(u_tolower(letter), letter);
        std::string text;
        icu::UnicodeString(letter).toUTF8String(text);
        ASSERT_EQ(lowerCased(text + "A"), text + "a");
    }
    EXPECT_EQ(lowerCased("李Ä"), "李ä");
}

TEST(UnicodeTextTest, BytesThatAreNoLetterHaveNoCase) {
    for (const std::string bytes : {"\xE6", "\xE6\x9D", "\x80", "\xFF", "\xC3"}) {
        EXPECT_EQ(lowerCased(bytes + "A"), bytes + "a");
        EXPECT_EQ(lowerCased(bytes + "Ä"), bytes + "ä");
    }
}

TEST(UnicodeTextTest, LowerCaseIsAppended) {
    std::string text = "Ä";
    appendLowerCased("AB", text);
    appendLowerCased("Ä", text);
    EXPECT_EQ(text, "Äabä");
}

TEST(UnicodeTextTest, ACaseMayChangeTheLength) {
    EXPECT_EQ(upperCased("straße"), "STRASSE");
    EXPECT_EQ(lowerCased("ΟΔΟΣ"), "οδος");
    EXPECT_EQ(lowerCased("İ"), "i\u0307");
}

TEST(UnicodeTextTest, BlanksAroundAreBlanksOfAnyWidthAndTabs) {
    EXPECT_EQ(withoutBlanksAround(" \t a b\t "), "a b");
    EXPECT_EQ(withoutBlanksAround("\u00A0\u3000李 雷\u2003\u202F"), "李 雷");
    EXPECT_EQ(withoutBlanksAround("\u3000李雷\u3000"), "李雷");
    EXPECT_EQ(withoutBlanksAround("a\u3000"), "a");
    EXPECT_EQ(withoutBlanksAround("\u3000a"), "a");
    EXPECT_EQ(withoutBlanksAround("李\u3000"), "李");
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
    EXPECT_EQ(withoutBlanksAround("a\xE6  "), "a\xE6");
    EXPECT_EQ(withoutBlanksAround("a\xE6\xC2\xA0"), "a\xE6");
    EXPECT_EQ(digits("1\xff"
                     "2\xc3"),
              "12");
    EXPECT_EQ(findLineEnd("\xe2\x80"), 2u);
    EXPECT_EQ(lowerCased("A\xff"), "a\xff");
}

TEST(UnicodeTextTest, PlainLineEndsAreThoseOfUnixAndOfTheNetwork) {
    for (const std::string_view plain : {"", "a", "a\n", "a\r\nb\n\n", "李\r\n雷", "\r\n"})
        EXPECT_TRUE(hasPlainLineEnds(plain)) << plain;
    for (const std::string_view other :
         {"\r", "a\rb", "a\n\r", "\va", "a\f", "a\u0085b", "a\u2028", "\u2029a"})
        EXPECT_FALSE(hasPlainLineEnds(other)) << other;
}

}  // namespace
