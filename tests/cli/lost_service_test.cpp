// What each command does where the service refuses, is not there, or goes away in the middle.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cli/cloud_test.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using Line = std::vector<std::string>;

class EachCommandTest : public CloudTest, public testing::WithParamInterface<Line> {
  protected:
    EachCommandTest() { make("a", "a"); }
    Outcome runWith(const std::string& name, const std::string& value) const {
        auto settings = this->settings();
        settings.environment["QUILLBOX_TOKEN"] = "some-wrong-token";
        settings.environment[name] = value;
        auto line = GetParam();
        line.push_back("--json");
        return run(std::move(line), settings);
    }
    static void expectOneFailure(const Outcome& result) {
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.lines, ElementsAre(HasSubstr("ailure\"")));
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
        EXPECT_THAT(result.output + result.error, Not(HasSubstr("some-wrong-token")));
        EXPECT_THAT(result.error, Not(HasSubstr("error request"))) << "words for people";
    }
};

TEST_P(EachCommandTest, TellsThatTheTokenIsRefused) {
    const auto result = runWith("QUILLBOX_TOKEN", "some-wrong-token");
    expectOneFailure(result);
    EXPECT_THAT(result.error, HasSubstr("13000401 the token in the header Authorization is unknown"));
}

TEST_P(EachCommandTest, TellsThatTheServiceIsNotThere) {
    const auto result = runWith("QUILLBOX_HOST", "http://127.0.0.1:1");
    expectOneFailure(result);
    EXPECT_THAT(result.error, HasSubstr("did not answer the request"));
}

TEST_P(EachCommandTest, TellsThatTheHostIsNone) {
    const auto result = runWith("QUILLBOX_HOST", "no address");
    expectOneFailure(result);
    EXPECT_THAT(result.error, HasSubstr("no valid address"));
}

INSTANTIATE_TEST_SUITE_P(Commands, EachCommandTest,
                         testing::Values(Line{"upload", "a"}, Line{"download", "--file-id", "1", "--to", "b"},
                                         Line{"verify", "a", "--parent", "root"}, Line{"ls"},
                                         Line{"mkdir", "x"}, Line{"rename", "1", "x"}, Line{"search", "x"},
                                         Line{"path", "1"}, Line{"detail", "1"}),
                         [](const auto& each) { return each.param.front(); });

/// A service that keeps what it has through a kill.
class LostServiceTest : public CloudTest {
  protected:
    LostServiceTest() : CloudTest(Storage::folder) {}
    static std::vector<std::string> with(Line arguments) {
        arguments.push_back("--json");
        return arguments;
    }
    const std::string large_ = std::string(20 << 20, 'x');
};

TEST_F(LostServiceTest, AnUploadFailsWithItsCauseWhereTheServiceIsKilledInTheMiddle) {
    make("large", large_);
    plan(R"({"path":"/_part/*","kind":"stall","seconds":600,"times":9})");
    QuillboxProcess process(with({"upload", "large"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("onProgress"));
    service_.kill();
    EXPECT_EQ(process.wait(), 1);
    EXPECT_EQ(process.lines().back(),
              R"({"event":"onFailure","file":"large","code":100016,"message":"file invaild"})");
    const auto error = process.error();
    EXPECT_THAT(error, StartsWith("large: a part could not be sent: "));
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1) << error;
}

TEST_F(LostServiceTest, AnUploadWithRetriesOutlivesTheService) {
    make("large", large_);
    plan(R"({"path":"/_part/*","kind":"stall","seconds":600,"times":9})");
    QuillboxProcess process(with({"upload", "large", "--retries", "9"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("onProgress"));
    service_.kill();
    service_.start();
    EXPECT_EQ(process.wait(), 0) << process.error();
    EXPECT_THAT(process.output(), Not(HasSubstr("onFailure")));
    EXPECT_EQ(json({"verify", "large", "--parent", "root"}).status, 0);
}

TEST_F(LostServiceTest, ADownloadFailsWhereTheServiceIsKilledInTheMiddleAndTheOldFileStays) {
    make("large", large_);
    ASSERT_EQ(json({"upload", "large"}).status, 0);
    const auto id = idOf("large");
    make("back", "as it was");
    plan(R"({"path":"/_content/*","kind":"trickle","bytesPerSecond":1000000})");
    QuillboxProcess process(with({"download", "--file-id", id, "--to", "back"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("onProgress"));
    service_.kill();
    EXPECT_EQ(process.wait(), 1);
    EXPECT_THAT(process.lines().back(), StartsWith(R"({"event":"failure","message":")"));
    EXPECT_THAT(process.error(), StartsWith("back: "));
    EXPECT_EQ(contentOf(home_ / "back"), "as it was");
    service_.start();
    EXPECT_EQ(json({"download", "--file-id", id, "--to", "back"}).status, 0);
    EXPECT_EQ(contentOf(home_ / "back"), large_);
}

TEST_F(LostServiceTest, APartThatTheServiceRefusesIsMissingAtTheEnd) {
    make("a", "hello");
    plan(R"({"path":"/_part/*","kind":"expire"})");
    const auto result = json({"upload", "a"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "a: the service refused to complete it: 13000409 part 1 is missing\n");
}

TEST_F(LostServiceTest, AContentThatBreaksOffIsNoSuccess) {
    make("a", "hello");
    json({"upload", "a"});
    const auto id = idOf("a");
    for (const std::string fault :
         {R"("kind":"truncate","bytes":3)", R"("kind":"html")", R"("kind":"expire")", R"("kind":"empty")",
          R"("kind":"garbage")", R"("kind":"reset")", R"("kind":"status","status":500,"body":{})"}) {
        plan(R"({"path":"/_content/*",)" + fault + "}");
        const auto result = json({"download", "--file-id", id, "--to", "back"});
        EXPECT_EQ(result.status, 1) << fault;
        EXPECT_THAT(result.lines.back(), StartsWith(R"({"event":"failure")")) << fault;
        EXPECT_THAT(result.error, StartsWith("back: ")) << fault;
        EXPECT_FALSE(fs::exists(home_ / "back")) << fault;
    }
}

}  // namespace
}  // namespace quillbox_test
