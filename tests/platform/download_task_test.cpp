#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using testing::Contains;
using testing::HasSubstr;

constexpr auto kOldEnough = "Mon, 01 Jan 2024 00:00:00 GMT";
constexpr auto kLater = "Mon, 01 Jan 2024 00:00:01 GMT";

class DownloadTask : public testing::Test {
  protected:
    DownloadAnswer download(const ScriptedServer& server, std::optional<std::string> validator = {}) {
        Awaited<DownloadAnswer> answer;
        transport
            ->downloadTask({.url = server.url("/f"), .partialFile = file, .validator = std::move(validator)},
                           progress.listener(), answer.completion())
            ->resume();
        return answer.get();
    }
    void writePart(std::string_view bytes) { std::ofstream(file, std::ios::binary) << bytes; }
    std::string content() const {
        std::ostringstream bytes;
        bytes << std::ifstream(file, std::ios::binary).rdbuf();
        return bytes.str();
    }
    ScriptedServer::Handler answering(int status, std::string body, test_support::Headers headers = {}) {
        return [=](Exchange& exchange) { exchange.answer(status, body, headers); };
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder / "partial";
    std::shared_ptr<CurlTransport> transport = makeTransport();
    ProgressRecord progress;
};

TEST_F(DownloadTask, WritesTheAnswerToANewFile) {
    ScriptedServer server(answering(200, "content", {{"ETag", "\"v1\""}}));
    const auto answer = download(server);
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.validator, "\"v1\"");
    EXPECT_EQ(content(), "content");
    EXPECT_THAT(progress.reports(), Contains(Totals{7, 7}));
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.verb, "GET");
    EXPECT_EQ(request.header("Accept-Encoding"), "identity");
    EXPECT_EQ(request.headerCount("Range"), 0u);
    EXPECT_EQ(request.headerCount("Authorization"), 0u);
}

TEST_F(DownloadTask, WritesALargeAnswerByteForByte) {
    std::string body(20'000'001, '\0');
    for (std::size_t i = 0; i < body.size(); ++i) body[i] = static_cast<char>(i * 2654435761u >> 13);
    ScriptedServer server(answering(200, body));
    EXPECT_FALSE(download(server).error);
    EXPECT_TRUE(content() == body);
    EXPECT_EQ(progress.reports().back(), (Totals{20'000'001, 20'000'001}));
}

TEST_F(DownloadTask, MakesAnEmptyFileOfAnEmptyAnswer) {
    ScriptedServer server(answering(200, ""));
    EXPECT_FALSE(download(server).error);
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(content(), "");
}

TEST_F(DownloadTask, ReportsATotalOfMinusOneWhereTheLengthIsUnknown) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n");
    });
    EXPECT_FALSE(download(server).error);
    EXPECT_EQ(content(), "abc");
    EXPECT_THAT(progress.reports(), Contains(Totals{3, -1}));
}

TEST_F(DownloadTask, ContinuesAFileWhereTheServiceAgrees) {
    writePart("conte");
    ScriptedServer server(answering(206, "nt!", {{"Content-Range", "bytes 5-7/8"}, {"ETag", "\"v1\""}}));
    const auto answer = download(server, "\"v1\"");
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 206);
    EXPECT_EQ(answer.validator, "\"v1\"");
    EXPECT_EQ(content(), "content!");
    EXPECT_THAT(progress.reports(), Contains(Totals{8, 8}));
    EXPECT_EQ(server.requests().at(0).header("Range"), "bytes=5-");
    EXPECT_EQ(server.requests().at(0).header("If-Range"), "\"v1\"");
}

TEST_F(DownloadTask, ContinuesAFileBehindFourGibibytes) {
    writePart("");
    std::filesystem::resize_file(file, 5'368'709'120);
    ScriptedServer server(answering(
        206, "end", {{"Content-Range", "bytes 5368709120-5368709122/5368709123"}, {"ETag", "\"v1\""}}));
    EXPECT_FALSE(download(server, "\"v1\"").error);
    EXPECT_EQ(server.requests().at(0).header("Range"), "bytes=5368709120-");
    EXPECT_EQ(std::filesystem::file_size(file), 5'368'709'123U);
    EXPECT_THAT(progress.reports(), Contains(Totals{5'368'709'123, 5'368'709'123}));
}

TEST_F(DownloadTask, StartsAnewWhereTheFileOfTheServiceHasChanged) {
    writePart("old content that is longer");
    ScriptedServer server(answering(200, "new", {{"ETag", "\"v2\""}}));
    const auto answer = download(server, "\"v1\"");
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.validator, "\"v2\"");
    EXPECT_EQ(content(), "new");
}

TEST_F(DownloadTask, StartsAnewWithoutAValidator) {
    writePart("of unknown origin");
    ScriptedServer server(answering(200, "new"));
    EXPECT_FALSE(download(server).error);
    EXPECT_EQ(server.requests().at(0).headerCount("Range"), 0u);
    EXPECT_EQ(content(), "new");
}

TEST_F(DownloadTask, AsksForNoRangeWhereThereIsNothingToContinue) {
    writePart("");
    ScriptedServer server(answering(200, "new"));
    EXPECT_FALSE(download(server, "\"v1\"").error);
    EXPECT_EQ(server.requests().at(0).headerCount("Range"), 0u);
    EXPECT_EQ(server.requests().at(0).headerCount("If-Range"), 0u);
}

TEST_F(DownloadTask, SavesWhateverARefusalAnswersAndNeverBehindOtherBytes) {
    for (const int status : {403, 404, 500, 503}) {
        writePart("conte");
        ScriptedServer server(answering(status, "refused", {{"ETag", "\"v1\""}}));
        const auto answer = download(server, "\"v1\"");
        EXPECT_FALSE(answer.error);
        EXPECT_EQ(answer.status, status);
        EXPECT_FALSE(answer.validator);
        EXPECT_EQ(content(), "refused");
    }
}

TEST_F(DownloadTask, EndsInAnErrorAndAnEmptyFileWhereTheRangeIsNotTheOneAskedFor) {
    for (const std::string range : {"bytes 4-7/8", "bytes 0-7/8", "bytes 6-7/8", "bytes */8", "lines 5-7/8",
                                    "bytes 5-4/8", "bytes 5-7/7", "bytes 5-7/", "bytes -5-7/8", ""}) {
        writePart("conte");
        ScriptedServer server(answering(206, "nt!", {{"Content-Range", range}}));
        const auto answer = download(server, "\"v1\"");
        ASSERT_TRUE(answer.error) << range;
        EXPECT_FALSE(answer.validator);
        EXPECT_EQ(content(), "") << range;
        EXPECT_EQ(server.requestCount(), 1u);
    }
}

TEST_F(DownloadTask, EndsInAnErrorAndAnEmptyFileWhereTheRangeIsRefused) {
    writePart("conte");
    ScriptedServer server(answering(416, "", {{"Content-Range", "bytes */3"}}));
    const auto answer = download(server, "\"v1\"");
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.status, 416);
    EXPECT_FALSE(answer.validator);
    EXPECT_EQ(content(), "");
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST_F(DownloadTask, EndsInAnErrorWhereAPartComesThatNobodyAskedFor) {
    ScriptedServer server(answering(206, "cont", {{"Content-Range", "bytes 0-3/8"}}));
    EXPECT_TRUE(download(server).error);
}

TEST_F(DownloadTask, KeepsWhatCameBeforeTheCutAndContinuesFromThere) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.number == 1) {
            exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 8\r\n\r\ncont");
            return exchange.close();
        }
        exchange.answer(206, "ent!", {{"Content-Range", "bytes 4-7/8"}});
    });
    const auto cut = download(server);
    ASSERT_TRUE(cut.error);
    EXPECT_EQ(cut.validator, "\"v1\"");
    EXPECT_EQ(content(), "cont");

    const auto whole = download(server, cut.validator);
    EXPECT_FALSE(whole.error);
    EXPECT_EQ(whole.validator, "\"v1\"");
    EXPECT_EQ(content(), "content!");
    EXPECT_EQ(server.requests().at(1).header("Range"), "bytes=4-");
}

TEST_F(DownloadTask, EndsInAnErrorWhereTheRangeStopsBeforeTheEndOfTheFile) {
    writePart("co");
    ScriptedServer server(answering(206, "nt", {{"Content-Range", "bytes 2-3/8"}}));
    const auto answer = download(server, "\"v1\"");
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.validator, "\"v1\"");
    EXPECT_EQ(content(), "cont");
}

TEST_F(DownloadTask, LeavesTheFileAloneWhereNoAnswerCame) {
    writePart("conte");
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 206 Partial\r\nX");
        exchange.close();
    });
    const auto answer = download(server, "\"v1\"");
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.validator, "\"v1\"");
    EXPECT_EQ(content(), "conte");
}

TEST_F(DownloadTask, GivesNoValidatorForTheHalfBodyOfARefusal) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 500 Oh\r\nETag: \"e\"\r\nContent-Length: 8\r\n\r\ncont");
        exchange.close();
    });
    const auto answer = download(server);
    EXPECT_TRUE(answer.error);
    EXPECT_FALSE(answer.validator);
}

TEST_F(DownloadTask, TakesOnlyAStrongValidator) {
    struct Case {
        test_support::Headers headers;
        std::optional<std::string> validator;
    };
    const std::vector<Case> cases{
        {{}, std::nullopt},
        {{{"ETag", "W/\"weak\""}}, std::nullopt},
        {{{"ETag", "W/\"weak\""}, {"Last-Modified", kOldEnough}, {"Date", kLater}}, kOldEnough},
        {{{"Last-Modified", kOldEnough}, {"Date", kLater}}, kOldEnough},
        {{{"Last-Modified", kOldEnough}}, std::nullopt},
        {{{"Last-Modified", kLater}, {"Date", kLater}}, std::nullopt},
        {{{"Last-Modified", "yesterday or so"}, {"Date", kLater}}, std::nullopt},
        {{{"ETag", "\"s\""}, {"Last-Modified", kOldEnough}, {"Date", kLater}}, "\"s\""},
    };
    for (const auto& [headers, validator] : cases) {
        ScriptedServer server(answering(200, "x", headers));
        EXPECT_EQ(download(server).validator, validator);
    }
}

TEST_F(DownloadTask, FollowsARedirectAndSavesOnlyItsEnd) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/f") return exchange.answer(302, "moved", {{"Location", "/g"}});
        exchange.answer(200, "there");
    });
    EXPECT_FALSE(download(server).error);
    EXPECT_EQ(content(), "there");
}

TEST_F(DownloadTask, EndsInAnErrorWhereTheFolderIsMissing) {
    file = folder / "missing" / "partial";
    ScriptedServer server(answering(200, "content"));
    const auto answer = download(server);
    ASSERT_TRUE(answer.error);
    EXPECT_THAT(answer.error->text, HasSubstr("No such file or directory"));
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(DownloadTask, EndsInAnErrorWhereTheFileIsNone) {
    ScriptedServer server(answering(200, "content"));
    file = folder.path();
    EXPECT_TRUE(download(server).error);
    file = folder / "fifo";
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_TRUE(download(server).error);
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(DownloadTask, EndsInAnErrorWhereTheDiskTakesNoMore) {
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{100'000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    ScriptedServer server(answering(200, std::string(1'000'000, 'x'), {{"ETag", "\"v1\""}}));
    const auto answer = download(server);
    ::setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, TransportError::Kind::failed);
    EXPECT_THAT(answer.error->text, HasSubstr("File too large"));
}

TEST_F(DownloadTask, KeepsWhatCameBeforeItWasCancelled) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 8\r\n\r\ncont");
        exchange.hold();
    });
    Event moving;
    Awaited<DownloadAnswer> answer;
    const auto task = transport->downloadTask(
        {.url = server.url("/f"), .partialFile = file}, [&](std::int64_t, std::int64_t) { moving.set(); },
        answer.completion());
    task->resume();
    ASSERT_TRUE(moving.wait());
    task->cancel();
    const auto cancelled = answer.get();
    EXPECT_EQ(cancelled.error->kind, TransportError::Kind::cancelled);
    EXPECT_EQ(cancelled.validator, "\"v1\"");
    EXPECT_EQ(content(), "cont");
}

}  // namespace
}  // namespace baseapi
