#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>

#include <set>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using testing::HasSubstr;

TEST(Connections, AreUsedAgainOneRequestAfterTheOther) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "ok"); });
    const auto transport = makeTransport();
    for (int i = 0; i < 50; ++i) EXPECT_FALSE(get(*transport, server.url()).error);
    EXPECT_EQ(server.connectionCount(), 1u);
}

TEST(Connections, AreSharedByRequestsUploadsAndDownloads) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "ok"); });
    const TemporaryFolder folder;
    const auto transport = makeTransport();
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(get(*transport, server.url()).error);
        Awaited<std::optional<TransportError>> upload;
        transport->uploadTask({.url = server.url(), .data = bufferOf("part")}, nullptr, upload.completion())
            ->resume();
        EXPECT_FALSE(upload.get());
        Awaited<DownloadAnswer> download;
        transport
            ->downloadTask({.url = server.url(), .partialFile = folder / "f"}, nullptr, download.completion())
            ->resume();
        EXPECT_FALSE(download.get().error);
    }
    EXPECT_EQ(server.connectionCount(), 1u);
}

TEST(Connections, ThatTheServerClosedWhileIdleAreNotUsedAgain) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.answer(200, "ok");
        if (exchange.request.number == 1) exchange.close();
    });
    const auto transport = makeTransport();
    EXPECT_FALSE(get(*transport, server.url("/1")).error);
    ASSERT_TRUE(server.waitForEndedConnections(1));
    const auto answer = fetch(*transport, {.url = server.url("/2"), .verb = "POST", .body = "once"});
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(server.requestCount(), 2u);
    EXPECT_EQ(server.requests().at(1).connection, 2u);
}

/// A request on a connection that was used before, which breaks as soon as the request is there.
class KeptConnectionBreaks : public testing::TestWithParam<bool> {
  protected:
    ScriptedServer server{[](Exchange& exchange) {
        if (exchange.request.number == 1) return exchange.answer(200, "ok");
        if (GetParam()) return exchange.reset();
        exchange.close();
    }};
    std::shared_ptr<CurlTransport> transport = makeTransport();

    void SetUp() override { ASSERT_FALSE(get(*transport, server.url("/1")).error); }
    void TearDown() override {
        EXPECT_EQ(server.requestCount(), 2u);
        EXPECT_EQ(server.requests().at(1).connection, 1u);
        // A second attempt would have come before this one.
        get(*transport, server.url("/3"));
        EXPECT_EQ(server.requestCount(), 3u);
    }
};

TEST_P(KeptConnectionBreaks, AndARequestIsSentOnce) {
    const auto answer = fetch(*transport, {.url = server.url("/2"), .verb = "POST", .body = "once"});
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, TransportError::Kind::failed);
    EXPECT_THAT(answer.error->text, HasSubstr("connection was lost"));
}

TEST_P(KeptConnectionBreaks, AndAnUploadIsSentOnce) {
    Awaited<std::optional<TransportError>> upload;
    transport
        ->uploadTask({.url = server.url("/2"), .data = bufferOf(std::string(200'000, 'u'))}, nullptr,
                     upload.completion())
        ->resume();
    EXPECT_TRUE(upload.get());
}

TEST_P(KeptConnectionBreaks, AndADownloadIsAskedForOnce) {
    const TemporaryFolder folder;
    Awaited<DownloadAnswer> download;
    transport
        ->downloadTask({.url = server.url("/2"), .partialFile = folder / "f"}, nullptr, download.completion())
        ->resume();
    EXPECT_TRUE(download.get().error);
}

INSTANTIATE_TEST_SUITE_P(Connections, KeptConnectionBreaks, testing::Bool(),
                         [](const auto& instance) { return instance.param ? "ByAReset" : "ByItsEnd"; });

TEST(Connections, AreNoMoreThanTheTransfersAtOneTime) {
    constexpr std::size_t kAtOneTime = 6;
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "ok"); });
    const auto transport = makeTransport();
    std::vector<std::jthread> callers;
    for (std::size_t i = 0; i < kAtOneTime; ++i) {
        callers.emplace_back([&] {
            for (int call = 0; call < 200; ++call) EXPECT_FALSE(get(*transport, server.url()).error);
        });
    }
    callers.clear();
    EXPECT_EQ(server.requestCount(), kAtOneTime * 200);
    EXPECT_LE(server.connectionCount(), kAtOneTime);
}

TEST(Connections, ToOneOriginAreLimitedAndTheRestWaitsItsTurnWithoutTimingOut) {
    Event open;
    ScriptedServer server([&](Exchange& exchange) {
        exchange.waitFor(open);
        exchange.answer(200, "ok");
    });
    const auto transport = makeTransport({.transfersPerOrigin = 2});
    std::vector<Awaited<DataAnswer>> answers(10);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        // Those that wait have a time-out that is over long before their turn.
        const std::chrono::milliseconds patience(i < 2 ? 30'000 : 400);
        transport
            ->dataTask({.url = server.url(), .verb = "GET", .idleTimeout = patience}, answers[i].completion())
            ->resume();
    }
    ASSERT_TRUE(server.waitForRequests(2));
    ScriptedServer elsewhere([](Exchange& exchange) { exchange.answer(200, "ok"); });
    EXPECT_FALSE(get(*transport, elsewhere.url()).error);
    EXPECT_EQ(server.requestCount(), 2u);

    Awaited<DataAnswer> timedOut;
    Event never;
    ScriptedServer silent([&](Exchange& exchange) { exchange.waitFor(never); });
    transport
        ->dataTask({.url = silent.url(), .verb = "GET", .idleTimeout = std::chrono::milliseconds(800)},
                   timedOut.completion())
        ->resume();
    EXPECT_TRUE(timedOut.get().error);

    open.set();
    for (auto& answer : answers) EXPECT_FALSE(answer.get().error);
    EXPECT_LE(server.connectionCount(), 2u);
}

/// A variable of the environment while it lives.
class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const std::string& value) : name_(name) {
        ::setenv(name, value.c_str(), 1);
    }
    ~EnvironmentVariable() { ::unsetenv(name_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    const char* name_;
};

TEST(Connections, GoThroughTheProxyOfTheEnvironment) {
    ScriptedServer proxy([](Exchange& exchange) { exchange.answer(200, "by proxy"); });
    const EnvironmentVariable variable("http_proxy", proxy.url());
    const auto answer = get(*makeTransport(), "http://far.example/x");
    EXPECT_EQ(answer.body, "by proxy");
    EXPECT_EQ(proxy.requests().at(0).target, "http://far.example/x");
}

TEST(Connections, LeaveTheProxyOutForTheHostsThatTheEnvironmentNames) {
    ScriptedServer proxy([](Exchange& exchange) { exchange.answer(200, "by proxy"); });
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "direct"); });
    const EnvironmentVariable variable("http_proxy", proxy.url());
    const EnvironmentVariable exception("no_proxy", "127.0.0.1");
    EXPECT_EQ(get(*makeTransport(), server.url()).body, "direct");
    EXPECT_EQ(proxy.connectionCount(), 0u);
}

TEST(Connections, AskTheProxyForATunnelToAnHttpsHostAndKeepTheTokenFromIt) {
    ScriptedServer proxy([](Exchange& exchange) {
        exchange.answer(403, "no tunnel");
        exchange.close();
    });
    const EnvironmentVariable variable("https_proxy", proxy.url());
    const auto answer = fetch(*makeTransport(), {.url = "https://far.example/x",
                                                 .verb = "POST",
                                                 .headers = {{"Authorization", "secret"}},
                                                 .body = "body"});
    EXPECT_TRUE(answer.error);
    EXPECT_FALSE(answer.status);
    ASSERT_EQ(proxy.requestCount(), 1u);
    const auto request = proxy.requests().at(0);
    EXPECT_EQ(request.verb, "CONNECT");
    EXPECT_EQ(request.target, "far.example:443");
    EXPECT_EQ(request.headerCount("Authorization"), 0u);
    EXPECT_EQ(request.body, "");
}

}  // namespace
}  // namespace baseapi
