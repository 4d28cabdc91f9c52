#include "cli/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbox {
namespace {

std::vector<std::string> parsed(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "quillbox");
    return parserArguments(static_cast<int>(arguments.size()), arguments.data());
}

using testing::ElementsAre;

TEST(Arguments, TheLastOneStandsFirst) {
    EXPECT_THAT(parsed({"a", "b"}), ElementsAre("b", "a"));
}

TEST(Arguments, AnEmptyValueBehindAnEqualsSignIsAnArgument) {
    EXPECT_THAT(parsed({"--token=", "call"}), ElementsAre("call", "", "--token"));
    EXPECT_THAT(parsed({"--token=a="}), ElementsAre("--token=a="));
}

TEST(Arguments, ATextInBracketsIsNoList) {
    const auto arguments = parsed({"[a,b]", "\x01"});
    EXPECT_EQ(withoutGuard(arguments[0]), "\x01");
    EXPECT_NE(arguments[1].front(), '[');
    EXPECT_EQ(withoutGuard(arguments[1]), "[a,b]");
    EXPECT_EQ(withoutGuard("plain"), "plain");
}

TEST(Arguments, BehindTwoDashesNothingIsAnOption) {
    EXPECT_THAT(parsed({"--", "--token="}), ElementsAre("--token=", "--"));
}

}  // namespace
}  // namespace quillbox
