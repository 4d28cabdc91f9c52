#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

class UploadTask : public testing::Test {
  protected:
    std::optional<TransportError> put(const ScriptedServer& server, std::string_view body) {
        Awaited<std::optional<TransportError>> upload;
        transport
            ->uploadTask({.url = server.url("/part?sign=1"),
                          .headers = {{"Content-Type", "application/octet-stream"},
                                      {"Content-Length", std::to_string(body.size())}},
                          .data = bufferOf(body)},
                         progress.listener(), upload.completion())
            ->resume();
        return upload.get();
    }

    std::shared_ptr<CurlTransport> transport = makeTransport();
    ProgressRecord progress;
};

TEST_F(UploadTask, SendsTheHeadersThatWereGivenAndNoOthers) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    EXPECT_FALSE(put(server, "part"));
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.verb, "PUT");
    EXPECT_EQ(request.target, "/part?sign=1");
    EXPECT_EQ(request.body, "part");
    EXPECT_THAT(
        request.headers,
        UnorderedElementsAre(Pair("Host", "127.0.0.1:" + std::to_string(server.port())),
                             Pair("Content-Type", "application/octet-stream"), Pair("Content-Length", "4")));
    EXPECT_THAT(progress.reports(), testing::Contains(Totals{4, 4}));
}

TEST_F(UploadTask, SendsAnEmptyPartWithLengthZero) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    EXPECT_FALSE(put(server, ""));
    EXPECT_EQ(server.requests().at(0).header("Content-Length"), "0");
    EXPECT_THAT(progress.reports(), IsEmpty());
}

TEST_F(UploadTask, TakesAnyStatusForSuccess) {
    for (const int status : {200, 204, 304, 403, 404, 500}) {
        ScriptedServer server(
            [&](Exchange& exchange) { exchange.answer(status, status == 204 ? "" : "why"); });
        EXPECT_FALSE(put(server, "part")) << status;
    }
}

TEST_F(UploadTask, SendsALargePartByteForByteWithRisingTotals) {
    std::string body(33'333'333, '\0');
    std::uint32_t state = 1;
    for (auto& byte : body) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    EXPECT_FALSE(put(server, body));
    EXPECT_TRUE(server.requests().at(0).body == body);

    std::int64_t before = 0;
    for (const auto& report : progress.reports()) {
        EXPECT_GE(report.done, before);
        EXPECT_EQ(report.total, 33'333'333);
        before = report.done;
    }
    EXPECT_EQ(before, 33'333'333);
}

TEST_F(UploadTask, EndsInAnErrorWhereTheAnswerIsNotWhole) {
    for (const std::string bytes :
         {"", "HTTP/1.1 200 OK\r\nX", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n1",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\n"}) {
        ScriptedServer server([&](Exchange& exchange) {
            exchange.send(bytes);
            exchange.close();
        });
        const auto error = put(server, "part");
        ASSERT_TRUE(error) << bytes;
        EXPECT_EQ(error->kind, TransportError::Kind::failed);
        EXPECT_EQ(server.requestCount(), 1u);
    }
}

TEST_F(UploadTask, EndsInAnErrorWhereTheConnectionBreaksInTheBody) {
    ScriptedServer server(
        [](Exchange& exchange) {
            exchange.readBody(100'000);
            exchange.reset();
        },
        {.readBodies = false});
    EXPECT_TRUE(put(server, std::string(30'000'000, 'x')));
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST_F(UploadTask, RefusesAHeaderWithAControlCharacter) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    Awaited<std::optional<TransportError>> upload;
    transport
        ->uploadTask({.url = server.url(), .headers = {{"x", "a\r\nb: c"}}, .data = bufferOf("part")},
                     nullptr, upload.completion())
        ->resume();
    EXPECT_TRUE(upload.get());
    EXPECT_EQ(server.connectionCount(), 0u);
}

TEST_F(UploadTask, IsCancelledInItsBody) {
    Event reading;
    ScriptedServer server(
        [&](Exchange& exchange) {
            exchange.readBody(1'000'000);
            reading.set();
            exchange.hold();
        },
        {.readBodies = false});
    Awaited<std::optional<TransportError>> upload;
    const auto task =
        transport->uploadTask({.url = server.url(), .data = bufferOf(std::string(60'000'000, 'x'))},
                              progress.listener(), upload.completion());
    task->resume();
    ASSERT_TRUE(reading.wait());
    task->cancel();
    EXPECT_EQ(upload.get()->kind, TransportError::Kind::cancelled);
}

TEST_F(UploadTask, BringsTheLastTotalsBeforeTheCompletionWhereTheListenerIsSlow) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    Event ended;
    std::vector<std::int64_t> seen;
    std::atomic<int> inside{0};
    transport
        ->uploadTask(
            {.url = server.url(), .data = bufferOf(std::string(20'000'000, 'x'))},
            [&](std::int64_t done, std::int64_t) {
                EXPECT_EQ(++inside, 1);
                std::this_thread::sleep_for(std::chrono::milliseconds(30));
                seen.push_back(done);
                --inside;
            },
            [&](const std::optional<TransportError>& error) {
                EXPECT_EQ(++inside, 1);
                EXPECT_FALSE(error);
                ended.set();
            })
        ->resume();
    ASSERT_TRUE(ended.wait());
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 20'000'000);
}

TEST_F(UploadTask, EndsAlsoWhereItsListenerThrows) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    Awaited<std::optional<TransportError>> upload;
    transport
        ->uploadTask(
            {.url = server.url(), .data = bufferOf("part")},
            [](std::int64_t, std::int64_t) { throw std::runtime_error("listener"); }, upload.completion())
        ->resume();
    EXPECT_FALSE(upload.get());
}

}  // namespace
}  // namespace baseapi
