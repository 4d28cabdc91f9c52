#include "cli/token_mask.h"

#include <gtest/gtest.h>

namespace quillbox {
namespace {

std::string masked(const std::string& token, const std::string& text) {
    TokenMask mask;
    mask.add(token);
    return mask(text);
}

TEST(TokenMask, ATokenIsMaskedWhereverItStands) {
    EXPECT_EQ(masked("secret-token", "unknown token secret-token, secret-token!"), "unknown token ***, ***!");
    EXPECT_EQ(masked("secret-token", "xsecret-tokenx"), "x***x");
}

TEST(TokenMask, AShortTokenIsMaskedAsAWordOfItsOwnAlone) {
    EXPECT_EQ(masked("abc", "no abc: abcd \"abc\""), "no ***: abcd \"***\"");
}

TEST(TokenMask, AnEmptyTokenMasksNothing) {
    EXPECT_EQ(masked("", "text"), "text");
}

TEST(TokenMask, ATokenThatIsSpelledWithEscapesInJsonIsMaskedThereToo) {
    EXPECT_EQ(masked("to\"ken\\123", R"(bad "to\"ken\\123")"), "bad \"***\"");
}

TEST(TokenMask, EarlierTokensStayMasked) {
    TokenMask mask;
    mask.add("first-token");
    mask.add("first-token-and-more");
    EXPECT_EQ(mask("first-token-and-more first-token"), "*** ***");
}

}  // namespace
}  // namespace quillbox
