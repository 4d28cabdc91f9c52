#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

ScriptedServer::Handler redirecting(int status, std::string to) {
    return [=](Exchange& exchange) { exchange.answer(status, "moved", {{"Location", to}}); };
}

TEST(Redirects, AreFollowedAndCountAsOneAttempt) {
    ScriptedServer server([](Exchange& exchange) {
        const auto hop = std::stoi(exchange.request.target.substr(1));
        if (hop == 20) return exchange.answer(200, "there");
        exchange.answer(302, "", {{"Location", "/" + std::to_string(hop + 1)}});
    });
    const auto answer = get(*makeTransport(), server.url("/0"));
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "there");
    EXPECT_EQ(server.connectionCount(), 1u);
}

TEST(Redirects, ThatNeverEndAreAnError) {
    ScriptedServer server(redirecting(302, "/again"));
    EXPECT_TRUE(get(*makeTransport(), server.url()).error);
    EXPECT_EQ(server.requestCount(), 21u);
}

TEST(Redirects, KeepAuthorizationWithinOneOrigin) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/b") return exchange.answer(200);
        exchange.answer(302, "", {{"Location", "/b"}});
    });
    fetch(*makeTransport(),
          {.url = server.url("/a"), .verb = "GET", .headers = {{"Authorization", "secret"}}});
    EXPECT_EQ(server.requests().at(1).header("Authorization"), "secret");
}

TEST(Redirects, NeverCarryAuthorizationToAnotherPort) {
    ScriptedServer other([](Exchange& exchange) { exchange.answer(200); });
    ScriptedServer server(redirecting(307, other.url("/b")));
    const auto answer = fetch(*makeTransport(), {.url = server.url("/a"),
                                                 .verb = "POST",
                                                 .headers = {{"authorization", "secret"}, {"x-a", "1"}},
                                                 .body = "body"});
    EXPECT_EQ(answer.status, 200);
    const auto request = other.requests().at(0);
    EXPECT_EQ(request.headerCount("Authorization"), 0u);
    EXPECT_EQ(request.header("x-a"), "1");
    EXPECT_EQ(request.body, "body");
}

TEST(Redirects, NeverCarryAuthorizationToAnotherHostName) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/b") return exchange.answer(200);
        const auto port = exchange.request.header("Host")->substr(9);
        exchange.answer(302, "", {{"Location", "http://localhost" + port + "/b"}});
    });
    const auto answer = fetch(
        *makeTransport(), {.url = server.url("/a"), .verb = "GET", .headers = {{"Authorization", "secret"}}});
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(server.requests().at(1).headerCount("Authorization"), 0u);
}

TEST(Redirects, NeverCarryAuthorizationToAnotherScheme) {
    ScriptedServer plain([](Exchange& exchange) { exchange.answer(200); });
    ScriptedServer server(redirecting(302, plain.url("/b")), {.tls = true});
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    const auto answer =
        fetch(*transport, {.url = server.url("/a"), .verb = "GET", .headers = {{"Authorization", "secret"}}});
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(server.requests().at(0).header("Authorization"), "secret");
    EXPECT_EQ(plain.requests().at(0).headerCount("Authorization"), 0u);
}

TEST(Redirects, ToAnAddressWithAPasswordSendItNowhere) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/b") return exchange.answer(401, "", {{"WWW-Authenticate", "Basic"}});
        const auto host = "name:password@" + *exchange.request.header("Host");
        exchange.answer(302, "", {{"Location", "http://" + host + "/b"}});
    });
    const auto answer = get(*makeTransport(), server.url("/a"));
    EXPECT_EQ(answer.status, 401);
    ASSERT_EQ(server.requestCount(), 2u);
    EXPECT_EQ(server.requests().at(1).headerCount("Authorization"), 0u);
}

TEST(Redirects, ToAnotherProtocolAreAnError) {
    const auto transport = makeTransport();
    for (const std::string to : {"file:///etc/hostname", "ftp://127.0.0.1/", "gopher://127.0.0.1/"}) {
        ScriptedServer server(redirecting(302, to));
        EXPECT_TRUE(get(*transport, server.url()).error) << to;
    }
}

struct Hop {
    std::string verb;
    int status;
    std::string nextVerb;
    std::string nextBody;
};

class RedirectedVerb : public testing::TestWithParam<Hop> {};

TEST_P(RedirectedVerb, BecomesWhatTheStatusAsksFor) {
    const auto& hop = GetParam();
    ScriptedServer server([&](Exchange& exchange) {
        if (exchange.request.target == "/b") return exchange.answer(200);
        exchange.answer(hop.status, "", {{"Location", "/b"}});
    });
    const auto transport = makeTransport();
    // Twice, since what one request changed must not reach the next.
    for (const std::size_t at : {1, 3}) {
        fetch(*transport, {.url = server.url("/a"), .verb = hop.verb, .body = "body"});
        EXPECT_EQ(server.requests().at(at - 1).verb, hop.verb);
        EXPECT_EQ(server.requests().at(at).verb, hop.nextVerb);
        EXPECT_EQ(server.requests().at(at).body, hop.nextBody);
    }
}

INSTANTIATE_TEST_SUITE_P(Redirects, RedirectedVerb,
                         testing::Values(Hop{"POST", 301, "GET", ""}, Hop{"POST", 302, "GET", ""},
                                         Hop{"POST", 303, "GET", ""}, Hop{"POST", 307, "POST", "body"},
                                         Hop{"POST", 308, "POST", "body"}, Hop{"PUT", 301, "PUT", "body"},
                                         Hop{"PUT", 302, "PUT", "body"}, Hop{"PUT", 303, "GET", ""},
                                         Hop{"PUT", 307, "PUT", "body"}, Hop{"PATCH", 308, "PATCH", "body"}));

TEST(Redirects, ToAnAnswerThatEndsInsideItsHeadAreAnError) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target != "/b") return exchange.answer(302, "", {{"Location", "/b"}});
        exchange.send("HTTP/1.1 200 OK\r\nX: ");
        exchange.close();
    });
    EXPECT_TRUE(get(*makeTransport(), server.url("/a")).error);
    EXPECT_EQ(server.requestCount(), 2u);
}

TEST(Redirects, OfAnUploadSendTheWholeBodyOnAndTheTotalsNeverFall) {
    const std::string body(2'000'000, 'p');
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/b") return exchange.answer(200);
        exchange.answer(307, "", {{"Location", "/b"}});
    });
    const auto transport = makeTransport();
    Awaited<std::optional<TransportError>> upload;
    ProgressRecord progress;
    transport
        ->uploadTask({.url = server.url("/a"), .data = bufferOf(body)}, progress.listener(),
                     upload.completion())
        ->resume();
    EXPECT_FALSE(upload.get());
    EXPECT_TRUE(server.requests().at(1).body == body);
    std::int64_t before = 0;
    for (const auto& report : progress.reports()) {
        EXPECT_GE(report.done, before);
        before = report.done;
    }
    EXPECT_EQ(before, 2'000'000);
}

}  // namespace
}  // namespace baseapi
