#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>

#include "tests/cli/quillbox_process.h"
#include "tests/support/file_content.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"

namespace quillbox_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// The program against a server that answers everything with one record.
class CommandLineTest : public testing::Test {
  protected:
    Outcome call(std::vector<std::string> arguments, RunSettings settings = {}) {
        return run(std::move(arguments), std::move(settings));
    }
    void expectUnusable(const Outcome& result, const std::string& why) const {
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_THAT(result.error, HasSubstr(why));
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
        EXPECT_EQ(server_.requestCount(), 0U);
    }
    std::optional<std::string> sentHeader(const std::string& name) const {
        return server_.requests().at(0).header(name);
    }

    test_support::TemporaryFolder folder_;
    test_support::ScriptedServer server_{
        [](test_support::Exchange& exchange) { exchange.answer(200, R"({"code":0,"list":[]})"); }};
};

TEST_F(CommandLineTest, HelpAndVersionAreAnswers) {
    const auto help = call({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("upload"));
    EXPECT_THAT(help.output, HasSubstr("Exit status"));
    EXPECT_THAT(call({"upload", "--help"}).output, HasSubstr("--retries"));
    EXPECT_THAT(call({"--version"}).output, StartsWith("quillbox "));
}

TEST_F(CommandLineTest, WhatIsNoCommandCannotBeUsed) {
    expectUnusable(call({}), "quillbox --help");
    expectUnusable(call({"nonsense"}), "there is no command nonsense; see quillbox --help");
    expectUnusable(call({"--json", "upsert", "x"}), "there is no command upsert");
    expectUnusable(call({"call", "getAccessFiles", "{}", "more"}), "quillbox call --help");
    expectUnusable(call({"call", "--nonsense"}), "quillbox call --help");
    expectUnusable(call({"upload"}), "PATH");
    expectUnusable(call({"upload", "x", "--retries", "-1"}), "--retries");
    expectUnusable(call({"upload", "x", "--retries", "some"}), "--retries");
    expectUnusable(call({"call", "getAccessFiles", "--wait", "-1"}), "--wait");
    expectUnusable(call({"call", "getAccessFiles", "--wait", "nan"}), "--wait");
    expectUnusable(call({"download", "--to", "x"}), "--url");
    expectUnusable(call({"download", "--url", "a", "--file-id", "b", "--to", "x"}), "--file-id");
    expectUnusable(call({"download", "--url", "http://x"}), "--to");
}

TEST_F(CommandLineTest, SessionOptionsStandAnywhereOnTheLine) {
    for (const auto& line : std::vector<std::vector<std::string>>{
             {"--host", server_.url(), "call", "getAccessFiles", "--json"},
             {"call", "--host", server_.url(), "getAccessFiles", "--json"},
             {"--json", "call", "getAccessFiles", "--host=" + server_.url()}}) {
        const auto result = call(line);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_THAT(result.lines, SizeIs(1));
    }
    EXPECT_EQ(server_.requestCount(), 3U);
}

TEST_F(CommandLineTest, AnOptionWinsOverTheEnvironment) {
    RunSettings settings;
    settings.environment = {{"QUILLBOX_HOST", "http://127.0.0.1:1"},
                            {"QUILLBOX_TOKEN", "of-the-environment"}};
    EXPECT_EQ(call({"call", "getAccessFiles", "--host", server_.url()}, settings).status, 0);
    EXPECT_EQ(sentHeader("Authorization"), "of-the-environment");
}

TEST_F(CommandLineTest, AnAbsentTokenLeavesTheHeaderOutAndAnEmptyOneDoesNot) {
    EXPECT_EQ(call({"call", "getAccessFiles", "--host", server_.url()}).status, 0);
    EXPECT_EQ(call({"call", "getAccessFiles", "--host", server_.url(), "--token", ""}).status, 0);
    EXPECT_EQ(call({"call", "getAccessFiles", "--token=", "--host", server_.url()}).status, 0);
    ASSERT_EQ(server_.requestCount(), 3U);
    EXPECT_EQ(server_.requests()[0].header("Authorization"), std::nullopt);
    EXPECT_EQ(server_.requests()[1].header("Authorization"), "");
    EXPECT_EQ(server_.requests()[2].header("Authorization"), "");
}

TEST_F(CommandLineTest, ATokenFileGivesItsFirstLine) {
    std::ofstream(folder_ / "token") << "from-the-file\nmore\n";
    EXPECT_EQ(call({"call", "getAccessFiles", "--host", server_.url(), "--token-file",
                    (folder_ / "token").string()})
                  .status,
              0);
    EXPECT_EQ(sentHeader("Authorization"), "from-the-file");
}

TEST_F(CommandLineTest, TokenAndTokenFileTogetherCannotBeUsed) {
    std::ofstream(folder_ / "token") << "x";
    expectUnusable(
        call({"call", "getAccessFiles", "--token", "a", "--token-file", (folder_ / "token").string()}),
        "--token-file");
    expectUnusable(call({"call", "getAccessFiles", "--token-file", (folder_ / "missing").string()}),
                   "No such file or directory");
}

TEST_F(CommandLineTest, OneOfTokenAndTokenFileWinsOverBothInTheEnvironment) {
    std::ofstream(folder_ / "token") << "of-the-file\n";
    RunSettings settings;
    settings.environment = {
        {"QUILLBOX_HOST", server_.url()}, {"QUILLBOX_TOKEN", "a"}, {"QUILLBOX_TOKEN_FILE", "b"}};
    EXPECT_EQ(call({"call", "getAccessFiles", "--token", "of-the-line"}, settings).status, 0);
    EXPECT_EQ(call({"call", "getAccessFiles", "--token-file", (folder_ / "token").string()}, settings).status,
              0);
    ASSERT_EQ(server_.requestCount(), 2U);
    EXPECT_EQ(server_.requests()[0].header("Authorization"), "of-the-line");
    EXPECT_EQ(server_.requests()[1].header("Authorization"), "of-the-file");
    EXPECT_EQ(call({"call", "getAccessFiles"}, settings).status, 2);
}

TEST_F(CommandLineTest, WithoutAHostTheCallFails) {
    const auto result = call({"call", "getAccessFiles", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, SizeIs(1));
    EXPECT_THAT(result.output, StartsWith(R"({"event":"failure","code":-1,"message":")"));
}

TEST_F(CommandLineTest, LogLinesGoWhereTheyAreWanted) {
    const auto log = (folder_ / "log").string();
    EXPECT_EQ(
        call({"call", "getAccessFiles", "--host", server_.url(), "--token", "secret-token", "--log", log})
            .status,
        0);
    const auto content = test_support::contentOf(log);
    EXPECT_THAT(content, HasSubstr("Request url = " + server_.url() + "/quillbox/ose/v1/access\n"));
    EXPECT_THAT(content, HasSubstr("Request head = Authorization : secret-token\n"));
    const auto beside = call({"call", "getAccessFiles", "--host", server_.url(), "--log", "-"});
    EXPECT_THAT(beside.error, HasSubstr("Request url = "));
    EXPECT_THAT(beside.output, testing::Not(HasSubstr("Request url = ")));
}

TEST_F(CommandLineTest, WhatCannotBeOpenedCannotBeUsed) {
    expectUnusable(call({"call", "getAccessFiles", "--log", folder_.path().string()}), "Is a directory");
    expectUnusable(call({"call", "getAccessFiles", "--cacert", (folder_ / "missing").string()}), "--cacert");
    expectUnusable(call({"call", "getAccessFiles", "--state", ""}), "--state");
}

TEST_F(CommandLineTest, StandardOutputThatCannotBeWrittenIsAFailure) {
    RunSettings settings;
    settings.standardOutput = "/dev/full";
    const auto result = call({"call", "getAccessFiles", "--host", server_.url(), "--json"}, settings);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("No space left on device"));
}

TEST_F(CommandLineTest, AReaderThatIsGoneIsNoFailure) {
    RunSettings settings;
    settings.readerGone = true;
    const auto result = call({"call", "getAccessFiles", "--host", server_.url(), "--json"}, settings);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
}

}  // namespace
}  // namespace quillbox_test
