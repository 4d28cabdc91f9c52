#include "cli/session_options.h"

#include <gtest/gtest.h>

#include <map>

#include "cli/problems.h"

namespace quillbox {
namespace {

Environment environmentOf(std::map<std::string, std::string> variables) {
    return [variables](const std::string& name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        if (found == variables.end()) return std::nullopt;
        return found->second;
    };
}

TEST(SessionOptions, AnOptionWinsOverTheEnvironment) {
    SessionOptions options;
    options.host = "http://option";
    const auto filled = withEnvironment(
        options, environmentOf({{"QUILLBOX_HOST", "http://environment"}, {"QUILLBOX_LOG", "-"}}));
    EXPECT_EQ(filled.host, "http://option");
    EXPECT_EQ(filled.log, "-");
}

TEST(SessionOptions, WithNeitherAValueIsAbsent) {
    const auto filled = withEnvironment({}, environmentOf({}));
    EXPECT_EQ(filled.host, std::nullopt);
    EXPECT_EQ(filled.token, std::nullopt);
    EXPECT_EQ(filled.contentId, std::nullopt);
}

TEST(SessionOptions, AnEmptyTextIsAValue) {
    SessionOptions options;
    options.contentId = "";
    const auto filled =
        withEnvironment(options, environmentOf({{"QUILLBOX_CONTENT_ID", "c"}, {"QUILLBOX_TOKEN", ""}}));
    EXPECT_EQ(filled.contentId, "");
    EXPECT_EQ(filled.token, "");
}

TEST(SessionOptions, ATokenBesideATokenFileCannotBeUsed) {
    SessionOptions options;
    options.token = options.tokenFile = "x";
    EXPECT_THROW(withEnvironment(options, environmentOf({})), UsageError);
    EXPECT_THROW(withEnvironment({}, environmentOf({{"QUILLBOX_TOKEN", "t"}, {"QUILLBOX_TOKEN_FILE", "f"}})),
                 UsageError);
}

TEST(SessionOptions, ATokenOptionWinsOverATokenFileInTheEnvironmentAndTheOtherWayRound) {
    SessionOptions token;
    token.token = "option";
    EXPECT_EQ(withEnvironment(token, environmentOf({{"QUILLBOX_TOKEN_FILE", "f"}})).tokenFile, std::nullopt);
    SessionOptions file;
    file.tokenFile = "option";
    EXPECT_EQ(withEnvironment(file, environmentOf({{"QUILLBOX_TOKEN", "t"}})).token, std::nullopt);
}

TEST(StateFolder, ItIsTheOptionOtherwiseTheUsersOwn) {
    SessionOptions options;
    options.state = "/somewhere";
    EXPECT_EQ(stateFolder(options, environmentOf({{"XDG_STATE_HOME", "/x"}})), "/somewhere");
    EXPECT_EQ(stateFolder({}, environmentOf({{"XDG_STATE_HOME", "/x"}, {"HOME", "/h"}})), "/x/quillbox");
    EXPECT_EQ(stateFolder({}, environmentOf({{"XDG_STATE_HOME", "relative"}, {"HOME", "/h"}})),
              "/h/.local/state/quillbox");
    EXPECT_THROW(stateFolder({}, environmentOf({})), UsageError);
}

}  // namespace
}  // namespace quillbox
