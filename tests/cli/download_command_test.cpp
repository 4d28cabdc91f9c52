#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/cloud_test.h"
#include "tests/cli/script.h"
#include "tests/support/scripted_server.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using test_support::Exchange;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DownloadFromCloudTest : public CloudTest {};

TEST_F(DownloadFromCloudTest, AFileComesBackByItsId) {
    make("a.txt", "hello");
    json({"upload", "a.txt"});
    const auto result = json({"download", "--file-id", idOf("a.txt"), "--to", "deep/er/back"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(result.lines.back(), R"({"event":"success","path":"deep/er/back"})");
    EXPECT_THAT(result.lines, Contains(R"({"event":"onProgress","fraction":1})"));
    EXPECT_EQ(contentOf(home_ / "deep/er/back"), "hello");
}

TEST_F(DownloadFromCloudTest, AnEmptyFileComesBackEmpty) {
    make("empty", "");
    json({"upload", "empty"});
    EXPECT_EQ(json({"download", "--file-id", idOf("empty"), "--to", "back"}).status, 0);
    EXPECT_EQ(contentOf(home_ / "back"), "");
}

TEST_F(DownloadFromCloudTest, AnExistingFileIsReplaced) {
    make("a.txt", "hello");
    make("back", "something longer than that");
    json({"upload", "a.txt"});
    EXPECT_EQ(json({"download", "--file-id", idOf("a.txt"), "--to", "back"}).status, 0);
    EXPECT_EQ(contentOf(home_ / "back"), "hello");
}

TEST_F(DownloadFromCloudTest, AFolderIsNeverReplaced) {
    make("a.txt", "hello");
    json({"upload", "a.txt"});
    fs::create_directories(home_ / "folder");
    const auto result = json({"download", "--file-id", idOf("a.txt"), "--to", "folder"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.error, "quillbox: --to folder is a folder; give the path of a file in it\n");
    EXPECT_TRUE(fs::is_directory(home_ / "folder"));
}

TEST_F(DownloadFromCloudTest, AFullDiskIsAFailureThatLeavesNothing) {
    make("a.txt", std::string(300'000, 'x'));
    json({"upload", "a.txt"});
    auto settings = signedIn();
    settings.fileSizeLimit = 100'000;
    const auto result = run({"download", "--file-id", idOf("a.txt"), "--to", "back", "--json"}, settings);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines.back(), StartsWith(R"({"event":"failure","message":")"));
    EXPECT_THAT(result.error, StartsWith("back: "));
    EXPECT_FALSE(fs::exists(home_ / "back"));
    EXPECT_TRUE(fs::is_empty(temporaryFolder()));
}

TEST_F(DownloadFromCloudTest, AnUnknownFileIsAFailure) {
    const auto result = json({"download", "--file-id", "unknown", "--to", "back"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(StartsWith(R"({"event":"failure","message":")")));
    EXPECT_THAT(result.error, StartsWith("back: the service refused to tell where the file is: "));
    EXPECT_FALSE(fs::exists(home_ / "back"));
}

/// Downloads from a server that does what the test says.
class DownloadTest : public testing::Test {
  protected:
    std::string target() const { return (folder_ / "back").string(); }
    Outcome download(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(),
                         {"download", "--json", "--host", server_.url(), "--to", target()});
        return run(std::move(arguments));
    }
    /// A service whose file has this detail, and "hello" as its content.
    void serveDetail(const std::string& keys) {
        handler_ = [this, keys](Exchange& exchange) {
            if (exchange.request.target.ends_with("/detail"))
                exchange.answer(200, R"({"code":0,"downloadLinks":[{"usage":"thumbnail","downloadLink":"x"},)"
                                     R"({"downloadLink":"y"},{"usage":"content","downloadLink":")" +
                                         server_.url("/content") + "\"}]" + keys + "}");
            else
                exchange.answer(200, "hello");
        };
    }
    bool hasTarget() const { return fs::exists(target()); }

    static constexpr const char* hashOfHello =
        "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824";

    test_support::TemporaryFolder folder_;
    Script handler_;
    test_support::ScriptedServer server_{[this](Exchange& exchange) { handler_(exchange); }};
};

TEST_F(DownloadTest, AnAddressIsSavedWhateverItAnswers) {
    handler_ = [](Exchange& exchange) { exchange.answer(404, "nothing here"); };
    const auto result = download({"--url", server_.url("/x")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), R"({"event":"success","path":")" + target() + "\"}");
    EXPECT_EQ(fs::file_size(target()), 12U);
}

TEST_F(DownloadTest, WhatFitsTheDetailIsASuccess) {
    serveDetail(std::string(R"(,"size":5,"sha256":")") + hashOfHello + "\"");
    const auto result = download({"--file-id", "f", "--content-id", "c"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(server_.requests().at(0).body, R"({"fileId":"f","containerId":"c"})");
    EXPECT_EQ(server_.requests().at(1).target, "/content");
}

TEST_F(DownloadTest, AnotherSizeIsAFailureAndTheFileIsRemoved) {
    serveDetail(R"(,"size":6)");
    const auto result = download({"--file-id", "f"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.lines.back(),
              R"({"event":"failure","message":"the content is not the file: 5 bytes in place of 6"})");
    EXPECT_EQ(result.error, target() + ": the content is not the file: 5 bytes in place of 6\n");
    EXPECT_FALSE(hasTarget());
}

TEST_F(DownloadTest, AnotherHashIsAFailureAndTheFileIsRemoved) {
    serveDetail(R"(,"size":5,"sha256":"0000")");
    EXPECT_EQ(download({"--file-id", "f"}).status, 1);
    EXPECT_FALSE(hasTarget());
}

TEST_F(DownloadTest, AHashInCapitalsFits) {
    serveDetail(R"(,"sha256":"2CF24DBA5FB0A30E26E83B2AC5B9E29E1B161E5C1FA7425E73043362938B9824")");
    EXPECT_EQ(download({"--file-id", "f"}).status, 0);
}

TEST_F(DownloadTest, WhereTheDetailNamesNeitherAWarningSaysSo) {
    serveDetail("");
    const auto result = download({"--file-id", "f"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("warning: the service names neither size nor SHA-256"));
    EXPECT_TRUE(hasTarget());
}

TEST_F(DownloadTest, ADetailWithoutAContentLinkIsAFailure) {
    handler_ = [](Exchange& exchange) {
        exchange.answer(200, R"({"code":0,"downloadLinks":[{"usage":"thumbnail"}]})");
    };
    EXPECT_THAT(download({"--file-id", "f"}).lines,
                ElementsAre(R"({"event":"failure","message":"the file has no download link"})"));
}

TEST_F(DownloadTest, AServerThatIsGoneIsAFailure) {
    const auto result = download({"--url", "http://127.0.0.1:1/x"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(StartsWith(R"({"event":"failure","message":")")));
    EXPECT_FALSE(hasTarget());
}

TEST_F(DownloadTest, ATargetThatCannotBeWrittenIsAFailure) {
    handler_ = [](Exchange& exchange) { exchange.answer(200, "hello"); };
    const auto result = run({"download", "--json", "--url", server_.url("/x"), "--to", "/proc/nothing/back"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines.back(), StartsWith(R"({"event":"failure","message":")"));
}

TEST_F(DownloadTest, AtCtrlCTheDownloadIsCancelled) {
    test_support::Event sending;
    handler_ = [&](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhello");
        sending.set();
        exchange.hold();
    };
    QuillboxProcess process({"download", "--json", "--url", server_.url("/x"), "--to", target()});
    ASSERT_TRUE(sending.wait());
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.error(), HasSubstr("waiting for the download of " + target()));
    EXPECT_THAT(process.lines().back(), StartsWith(R"({"event":"failure","message":")"));
    EXPECT_FALSE(hasTarget());
}

}  // namespace
}  // namespace quillbox_test
