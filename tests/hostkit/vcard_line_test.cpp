#include "hostkit/vcard_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace hostkit;
using testing::ElementsAre;

TEST(VCardLineTest, FoldedLinesAreJoinedAndEmptyOnesLeftOut) {
    EXPECT_THAT(unfoldedLines("a:1\r\n 2\r\n\t3\r\n\r\nb:4\n  5\nc"), ElementsAre("a:123", "b:4 5", "c"));
    EXPECT_THAT(unfoldedLines("NOTE:\xE6\x9D\r\n \x8E"), ElementsAre("NOTE:李")) << "also within a letter";
    EXPECT_THAT(unfoldedLines(" a"), ElementsAre(" a"));
    EXPECT_THAT(unfoldedLines(""), ElementsAre());
}

TEST(VCardLineTest, ALineHasGroupNameParametersAndValue) {
    const auto line = parseVCardLine("item1.tel;type=home,\"voice,x\";PREF=1;Type=cell:a:b;c");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->name, "TEL");
    EXPECT_THAT(line->valuesOf("TYPE"), ElementsAre("home", "voice,x", "cell"));
    EXPECT_THAT(line->valuesOf("PREF"), ElementsAre("1"));
    EXPECT_EQ(line->value, "a:b;c");
    EXPECT_EQ(parseVCardLine("X;A=\":;\":v")->value, "v");
    EXPECT_EQ(parseVCardLine("X;A=:")->valuesOf("A").front(), "");
}

TEST(VCardLineTest, WhatIsNoLineIsNotTaken) {
    for (const auto* text : {"", "N", ":x", ".N:x", "N;:x", "N;HOME:x", "N;A=\"x:y", "N;A=\"x\"y:z",
                             "N;A=x\"y\":z", "N A:x", "李:x", " N:x"})
        EXPECT_FALSE(parseVCardLine(text)) << text;
}

TEST(VCardLineTest, EscapesStandForTheirText) {
    EXPECT_EQ(unescaped("a\\,b\\;c\\\\d\\ne\\Nf\\:"), "a,b;c\\d\ne\nf:");
    EXPECT_EQ(unescaped("end\\"), "end\\");
    EXPECT_THAT(unescapedComponents("a\\;b;c\\\\;;d"), ElementsAre("a;b", "c\\", "", "d"));
    EXPECT_THAT(unescapedComponents(""), ElementsAre(""));
    EXPECT_THAT(unescapedComponents("a\\"), ElementsAre("a\\"));
    EXPECT_EQ(escaped("a,b;c\\d\ne:"), "a\\,b\\;c\\\\d\\ne:");
}

TEST(VCardLineTest, ALongLineIsFoldedBetweenLetters) {
    std::string card;
    appendFolded("NOTE:" + std::string(70, 'x'), card);
    EXPECT_EQ(card, "NOTE:" + std::string(70, 'x') + "\r\n") << "75 bytes are a line";

    card.clear();
    appendFolded("NOTE:" + std::string(69, 'x') + "李雷" + std::string(80, 'y'), card);
    EXPECT_EQ(card, "NOTE:" + std::string(69, 'x') + "\r\n 李雷" + std::string(68, 'y') + "\r\n " +
                        std::string(12, 'y') + "\r\n");
}

}  // namespace
