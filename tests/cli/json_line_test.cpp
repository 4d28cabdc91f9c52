#include "cli/json_line.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillbox {
namespace {

TEST(JsonLine, KeysStandInTheOrderInWhichTheyWereAdded) {
    JsonLine line("onProgress");
    line.add("file", "a.txt")
        .add("bytes", 5)
        .add("total", std::int64_t{0})
        .add("done", true)
        .add("share", 0.5);
    EXPECT_EQ(line.text(),
              R"({"event":"onProgress","file":"a.txt","bytes":5,"total":0,"done":true,"share":0.5})");
}

TEST(JsonLine, AnAbsentValueIsNull) {
    EXPECT_EQ(JsonLine().add("request", std::optional<std::string>()).text(), R"({"request":null})");
}

TEST(JsonLine, ANumberThatJsonDoesNotKnowIsNull) {
    EXPECT_EQ(JsonLine().add("x", std::numeric_limits<double>::infinity()).text(), R"({"x":null})");
}

TEST(JsonLine, TextsOfAnyBytesGiveValidJson) {
    EXPECT_EQ(JsonLine().add("x", "a\"b\\c\nd\x01\xff中").text(), R"({"x":"a\"b\\c\u000ad\u0001)"
                                                                  "\uFFFD中\"}");
}

TEST(JsonLine, TheMaskSeesEachTextBeforeItIsEscaped) {
    const auto mask = [](const std::string& text) { return text == "a\"b" ? std::string("***") : text; };
    EXPECT_EQ(JsonLine().add("x", "a\"b").text(mask), R"({"x":"***"})");
}

TEST(Masked, ValuesAreMaskedAndKeysAreNot) {
    const auto mask = [](const std::string&) { return std::string("\"***\""); };
    EXPECT_EQ(masked(R"({"a" : "b","c":["d\"e",1]})", mask), R"({"a" : "***","c":["***",1]})");
}

TEST(Indented, ARecordStandsOnSeveralLines) {
    EXPECT_EQ(
        indented(R"({"a":[1,{"b":"x,{y"}],"c":{},"d":[]})"),
        "{\n  \"a\": [\n    1,\n    {\n      \"b\": \"x,{y\"\n    }\n  ],\n  \"c\": {},\n  \"d\": []\n}");
    EXPECT_EQ(indented("{}"), "{}");
}

}  // namespace
}  // namespace quillbox
