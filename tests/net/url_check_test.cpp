#include "baseapi/net/url_check.h"

#include <gtest/gtest.h>

#include <string>

namespace baseapi {
namespace {

const std::string host = "http://127.0.0.1:8080";

TEST(UrlCheck, TakesWhatTheGrammarAllows) {
    for (const auto* text : {
             "/quillbox/ose/v1/files/a-b_c.d~e",
             "/a/b;c=1/d,e/f:g/@h",
             "/a?b=c&d=/?:@!$&'()*+,;=",
             "/a%20b%C3%A9",
             "/a?b=%2F",
             "/a#fragment",
             "/a//b/../c",
             "",
         }) {
        EXPECT_TRUE(isURL(host + text)) << text;
    }
    EXPECT_TRUE(isURL("https://user@[2001:db8::1]:443/a"));
}

TEST(UrlCheck, TakesAPathWithoutAHost) {
    EXPECT_TRUE(isURL("/quillbox/ose/v1/access"));
    EXPECT_TRUE(isURL(""));
}

TEST(UrlCheck, RefusesEveryControlCharacterSpaceAndByteOutsideAscii) {
    for (int byte = 0; byte <= 0xff; ++byte) {
        if (byte > 0x20 && byte < 0x7f) continue;
        const std::string character(1, static_cast<char>(byte));
        EXPECT_FALSE(isURL(host + "/a" + character)) << byte;
        EXPECT_FALSE(isURL(host + "/a?b=" + character)) << byte;
        EXPECT_FALSE(isURL(host + character + "/a")) << byte;
    }
}

TEST(UrlCheck, RefusesOtherCharactersThatTheGrammarDoesNotAllow) {
    for (const char character : std::string_view("\"<>\\^`{|}[]")) {
        EXPECT_FALSE(isURL(host + "/a" + character)) << character;
        EXPECT_FALSE(isURL(host + "/a?b=" + character)) << character;
    }
    EXPECT_FALSE(isURL(host + "/a#b#c"));
}

TEST(UrlCheck, RefusesBrokenPercentSequences) {
    for (const auto* text : {"/%", "/%2", "/%zz", "/a%2/b", "/a?b=100%", "/a?b=%u00e9"}) {
        EXPECT_FALSE(isURL(host + text)) << text;
    }
}

TEST(UrlCheck, RefusesBrokenHosts) {
    for (const auto* text : {"http://a b/c", "http://[::1/c", "http://a:port/c", "http://a:80x",
                             "http://a:80:90/", "http://a%zz/c", "1http:/a:b"}) {
        EXPECT_FALSE(isURL(text)) << text;
    }
}

TEST(UrlCheck, SaysTheSameOfAnAddressHoweverOftenAndInTurnWithOthers) {
    for (int round = 0; round < 3; ++round) {
        for (char number = '0'; number < '6'; ++number) {
            const auto good = host + "/" + number;
            EXPECT_TRUE(isURL(good)) << good;
            EXPECT_FALSE(isURL(good + " ")) << good;
            EXPECT_TRUE(isURL(good + "?" + std::string(2000, 'a'))) << good;
            EXPECT_FALSE(isURL(good + "?" + std::string(2000, '"'))) << good;
            EXPECT_TRUE(isURL("")) << good;
        }
    }
}

TEST(QueryItems, TakeThePlaceOfTheQuery) {
    EXPECT_EQ(withQueryItems(host + "/a?old=1", {{"b", "2"}, {"c", "3"}}), host + "/a?b=2&c=3");
}

TEST(QueryItems, AreEscaped) {
    EXPECT_EQ(withQueryItems(host + "/a", {{"b", "x y&z"}, {"[c]", "#[]"}}),
              host + "/a?%5Bc%5D=%23%5B%5D&b=x%20y%26z");
}

TEST(QueryItems, CanBeNone) {
    EXPECT_EQ(withQueryItems(host + "/a?old=1", {}), host + "/a");
}

}  // namespace
}  // namespace baseapi
