#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using Kind = TransportError::Kind;

ScriptedServer::Handler answering(int status, std::string body = {}, test_support::Headers headers = {}) {
    return [=](Exchange& exchange) { exchange.answer(status, body, headers); };
}

/// Answers with these bytes and closes the connection.
ScriptedServer::Handler breakingOffAfter(std::string bytes) {
    return [=](Exchange& exchange) {
        exchange.send(bytes);
        exchange.close();
    };
}

TEST(DataTask, SendsVerbTargetHeadersAndBodyAsGiven) {
    ScriptedServer server(answering(201, "made"));
    const auto answer =
        fetch(*makeTransport(), {.url = server.url("/a/../b%20c?d=1&e"),
                                 .verb = "POST",
                                 .headers = {{"Content-Type", "application/json"}, {"x-a", "1"}},
                                 .body = R"({"k":1})"});
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 201);
    EXPECT_EQ(answer.body, "made");
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.verb, "POST");
    EXPECT_EQ(request.target, "/a/../b%20c?d=1&e");
    EXPECT_EQ(request.body, R"({"k":1})");
    EXPECT_THAT(
        request.headers,
        UnorderedElementsAre(Pair("Host", "127.0.0.1:" + std::to_string(server.port())),
                             Pair("Content-Type", "application/json"), Pair("x-a", "1"),
                             Pair("Accept-Encoding", HasSubstr("gzip")), Pair("Content-Length", "7")));
}

TEST(DataTask, SendsEveryVerbWithItsBody) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    for (const std::string verb : {"GET", "POST", "PUT", "DELETE", "PATCH"}) {
        EXPECT_FALSE(fetch(*transport, {.url = server.url(), .verb = verb, .body = "x" + verb}).error);
        const auto request = server.requests().back();
        EXPECT_EQ(request.verb, verb);
        EXPECT_EQ(request.body, "x" + verb);
        EXPECT_EQ(request.headerCount("Content-Type"), 0u);
    }
}

TEST(DataTask, AnnouncesAnEmptyBodyOnlyWhereTheVerbHasOne) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    for (const std::string verb : {"POST", "PUT", "PATCH"}) {
        fetch(*transport, {.url = server.url(), .verb = verb});
        EXPECT_EQ(server.requests().back().header("Content-Length"), "0") << verb;
    }
    for (const std::string verb : {"GET", "DELETE"}) {
        fetch(*transport, {.url = server.url(), .verb = verb});
        EXPECT_EQ(server.requests().back().headerCount("Content-Length"), 0u) << verb;
    }
}

TEST(DataTask, GoesToItsOwnAddressHoweverManyTakeTurns) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    for (std::size_t call = 0; call < 24; ++call) {
        const auto target = "/" + std::to_string(call % (call < 12 ? 3 : 6));
        const bool sends = call % 2 == 0;
        const auto answer = fetch(*transport, {.url = server.url(target),
                                               .verb = sends ? "PATCH" : "GET",
                                               .body = sends ? std::optional(target) : std::nullopt});
        EXPECT_EQ(answer.status, 200);
        const auto request = server.requests().at(call);
        EXPECT_EQ(request.target, target);
        EXPECT_EQ(request.verb, sends ? "PATCH" : "GET");
        EXPECT_EQ(request.body, sends ? target : "");
    }
    EXPECT_EQ(server.connectionCount(), 1u);
}

TEST(DataTask, ForgetsTheRequestBeforeOnTheSameConnection) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    fetch(*transport, {.url = server.url("/"), .verb = "PATCH", .headers = {{"x-one", "1"}}, .body = "one"});
    fetch(*transport, {.url = server.url("/"), .verb = "GET", .headers = {{"x-two", "2"}}});
    const auto second = server.requests().at(1);
    EXPECT_EQ(second.verb, "GET");
    EXPECT_EQ(second.body, "");
    EXPECT_EQ(second.headerCount("x-one"), 0u);
    EXPECT_EQ(second.header("x-two"), "2");
    EXPECT_EQ(second.connection, 1u);
}

TEST(DataTask, SendsAnEmptyHeaderValueAsAnEmptyHeader) {
    ScriptedServer server(answering(200));
    fetch(*makeTransport(), {.url = server.url(),
                             .verb = "GET",
                             .headers = {{"Authorization", ""}, {"x-empty", ""}, {"x-blank", " "}}});
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.header("Authorization"), "");
    EXPECT_EQ(request.header("x-empty"), "");
    EXPECT_EQ(request.header("x-blank"), "");
}

TEST(DataTask, SendsNoExpectationBeforeALargeBody) {
    ScriptedServer server(answering(200));
    const std::string body(3 << 20, 'b');
    EXPECT_FALSE(fetch(*makeTransport(), {.url = server.url(), .verb = "POST", .body = body}).error);
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.headerCount("Expect"), 0u);
    EXPECT_TRUE(request.body == body);
}

TEST(DataTask, RefusesAHeaderWithAControlCharacterAndSendsNothing) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    using namespace std::string_literals;
    const std::vector<HttpHeader> bad{{"Authorization", "a\r\nx-injected: 1"},
                                      {"x", "a\nb"},
                                      {"x", "a\rb"},
                                      {"x", "a\0b"s},
                                      {"x", "a\tb"},
                                      {"x", "a\x7f"},
                                      {"x\r\ny", "a"},
                                      {"x y", "a"},
                                      {"x:y", "a"},
                                      {"", "a"},
                                      {"x\0"s, "a"}};
    for (const auto& header : bad) {
        const auto answer = fetch(*transport, {.url = server.url(), .verb = "GET", .headers = {header}});
        ASSERT_TRUE(answer.error) << header.name;
        EXPECT_EQ(answer.error->kind, Kind::failed);
        EXPECT_FALSE(answer.status);
    }
    EXPECT_EQ(server.connectionCount(), 0u);
}

TEST(DataTask, RefusesAVerbThatWouldEndTheRequestLine) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    for (const std::string verb : {"", "GET /x HTTP/1.1\r\nx: ", "GE T"}) {
        EXPECT_TRUE(fetch(*transport, {.url = server.url(), .verb = verb}).error);
    }
    EXPECT_EQ(server.connectionCount(), 0u);
}

TEST(DataTask, RefusesWhatIsNoHttpUrl) {
    const auto transport = makeTransport();
    for (const std::string url :
         {"", "/quillbox/ose/v1/x", "ftp://127.0.0.1/", "file:///etc/passwd", "127.0.0.1:1/x", "http://",
          "http:///127.0.0.1/x", "http:/127.0.0.1/", "http://127.0.0.1:1/a b", "http://127.0.0.1:1/a\r\nb",
          "http://127.0.0.1:99999/"}) {
        const auto answer = get(*transport, url);
        ASSERT_TRUE(answer.error) << url;
        EXPECT_EQ(answer.error->kind, Kind::failed);
        EXPECT_FALSE(answer.error->text.empty());
    }
}

TEST(DataTask, GivesStatusAndBodyOfARefusal) {
    ScriptedServer server(answering(503, "busy"));
    const auto answer = get(*makeTransport(), server.url());
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 503);
    EXPECT_EQ(answer.body, "busy");
}

TEST(DataTask, GivesAnEmptyBodyWhereTheAnswerHasNone) {
    ScriptedServer server(answering(204));
    const auto answer = get(*makeTransport(), server.url());
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 204);
    EXPECT_EQ(answer.body, "");
}

TEST(DataTask, LeavesRoomForTheReaderBehindTheBody) {
    ScriptedServer server([](Exchange& exchange) {
        const auto size = std::stoul(exchange.request.target.substr(1));
        exchange.answer(200, std::string(size, 'b'));
    });
    const auto transport = makeTransport();
    for (const std::size_t size : {0, 1, 15, 16, 4'000, 16'384, 1'000'000}) {
        const auto answer = get(*transport, server.url("/" + std::to_string(size)));
        EXPECT_EQ(answer.body.size(), size);
        EXPECT_GE(answer.body.capacity(), size + 64);
    }
}

TEST(DataTask, LeavesRoomBehindABodyOfUnknownLength) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        const std::string chunk(0x1000, 'c');
        for (int i = 0; i < 100; ++i) exchange.send("1000\r\n" + chunk + "\r\n");
        exchange.send("0\r\n\r\n");
    });
    const auto answer = get(*makeTransport(), server.url());
    EXPECT_EQ(answer.body, std::string(100 * 0x1000, 'c'));
    EXPECT_GE(answer.body.capacity(), answer.body.size() + 64);
}

TEST(DataTask, UnpacksACompressedAnswer) {
    // "hello" as gzip has it.
    const unsigned char packed[] = {0x1f, 0x8b, 8, 0, 0,    0,    0,    0,    0, 3, 0xcb, 0x48, 0xcd,
                                    0xc9, 0xc9, 7, 0, 0x86, 0xa6, 0x10, 0x36, 5, 0, 0,    0};
    const std::string body(reinterpret_cast<const char*>(packed), sizeof packed);
    ScriptedServer server(answering(200, body, {{"Content-Encoding", "gzip"}}));
    const auto answer = get(*makeTransport(), server.url());
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.body, "hello");
}

TEST(DataTask, EndsInAnErrorWhereABodyIsLongerThanMemoryAllows) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/announced") return exchange.answer(200, std::string(1001, 'b'));
        exchange.send("HTTP/1.1 200 OK\r\n\r\n" + std::string(1001, 'b'));
        exchange.close();
    });
    const auto transport = makeTransport({.longestBody = 1000});
    for (const auto* path : {"/announced", "/unannounced"}) {
        const auto answer = get(*transport, server.url(path));
        ASSERT_TRUE(answer.error) << path;
        EXPECT_THAT(answer.error->text, HasSubstr("memory"));
        EXPECT_THAT(answer.body, IsEmpty());
    }
}

TEST(DataTask, TakesABodyThatEndsWithTheConnection) {
    ScriptedServer server(breakingOffAfter("HTTP/1.1 200 OK\r\n\r\nto the end"));
    const auto answer = get(*makeTransport(), server.url());
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.body, "to the end");
}

TEST(DataTask, TakesTheAnswerAfterAnInterimOne) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send(
            "HTTP/1.1 103 Early Hints\r\nLink: </a>\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n!");
    });
    const auto answer = get(*makeTransport(), server.url());
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "!");
}

class BrokenAnswer : public testing::TestWithParam<std::string> {};

TEST_P(BrokenAnswer, IsATransportError) {
    ScriptedServer server(breakingOffAfter(GetParam()));
    const auto answer = get(*makeTransport(), server.url());
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, Kind::failed);
    EXPECT_FALSE(answer.error->text.empty());
    EXPECT_FALSE(answer.status);
    EXPECT_EQ(server.requestCount(), 1u);
}

INSTANTIATE_TEST_SUITE_P(
    DataTask, BrokenAnswer,
    testing::Values(
        "",                                                                    // nothing at all
        "HTTP/1.1 2",                                                          // inside the status line
        "HTTP/1.1 200 OK\r\n",                                                 // before the first header
        "HTTP/1.1 200 OK\r\nContent-Le",                                       // inside a header
        "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n",                            // before the blank line
        "HTTP/1.1 103 Early Hints\r\n\r\n",                                    // after an interim answer
        "HTTP/1.1 103 Early Hints\r\n\r\nHTTP/1.1 200 OK\r\nX: 1\r\n",         // inside the real one
        "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n1234",                    // before the length
        "HTTP/1.1 500 Oh\r\nContent-Length: 5\r\n\r\n1234",                    //
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nabcd\r\n",  // without last chunk
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nab",        // inside a chunk
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\n",        // no chunk
        "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 3\r\n\r\nabc",
        "SSH-2.0-OpenSSH_9.2\r\n", "\r\n\r\n", "HTTP/7.7 banana\r\n\r\n"));

TEST(DataTask, EndsInAnErrorWhereTheConnectionIsReset) {
    ScriptedServer server([](Exchange& exchange) { exchange.reset(); });
    const auto answer = get(*makeTransport(), server.url());
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, Kind::failed);
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST(DataTask, EndsInAnErrorWhereNobodyListens) {
    const int port = ScriptedServer(answering(200)).port();
    const auto answer = get(*makeTransport(), "http://127.0.0.1:" + std::to_string(port) + "/");
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, Kind::failed);
}

TEST(DataTask, IsStartedOnceByTwoResumes) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    const auto task = transport->dataTask({.url = server.url(), .verb = "GET"}, answer.completion());
    task->resume();
    task->resume();
    EXPECT_FALSE(answer.get().error);
    EXPECT_FALSE(get(*transport, server.url()).error);
    EXPECT_EQ(server.requestCount(), 2u);
}

TEST(DataTask, DoesNotBeginBeforeItIsResumed) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    const auto task = transport->dataTask({.url = server.url("/never"), .verb = "GET"}, answer.completion());
    EXPECT_FALSE(get(*transport, server.url("/other")).error);
    EXPECT_FALSE(answer.ready());
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST(DataTask, HasANumberOfItsOwn) {
    const auto transport = makeTransport();
    const auto one = transport->dataTask({}, nullptr);
    const auto two = transport->uploadTask({}, nullptr, nullptr);
    const auto three = transport->downloadTask({}, nullptr, nullptr);
    EXPECT_NE(one->identifier(), two->identifier());
    EXPECT_NE(two->identifier(), three->identifier());
    EXPECT_NE(one->identifier(), three->identifier());
}

TEST(DataTask, IsSentAlsoWithoutACompletion) {
    ScriptedServer server(answering(200));
    const auto transport = makeTransport();
    transport->dataTask({.url = server.url("/unheard"), .verb = "GET"}, nullptr)->resume();
    EXPECT_TRUE(server.waitForRequests(1));
    EXPECT_FALSE(get(*transport, server.url()).error);
}

TEST(DataTask, StartsAtItsOwnAddressAgainAfterARedirect) {
    ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target == "/b") return exchange.answer(200);
        exchange.answer(302, "", {{"Location", "/b"}});
    });
    const auto transport = makeTransport();
    // More addresses than the transport keeps handles for.
    for (const auto* path : {"/a", "/a", "/c", "/d", "/e", "/f", "/g", "/a"}) {
        const auto before = server.requestCount();
        EXPECT_EQ(get(*transport, server.url(path)).status, 200);
        const auto requests = server.requests();
        ASSERT_EQ(requests.size(), before + 2);
        EXPECT_EQ(requests[before].target, path);
        EXPECT_EQ(requests[before + 1].target, "/b");
    }
}

TEST(DataTask, GoesOnAfterAnAddressThatIsNoURL) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    const auto transport = makeTransport();
    // More often than the transport keeps handles, so that one is used again.
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(get(*transport, server.url("/a" + std::to_string(i))).status, 200);
        EXPECT_TRUE(get(*transport, "http://127.0.0.1:99999/" + std::to_string(i)).error);
        EXPECT_EQ(get(*transport, server.url("/b" + std::to_string(i))).status, 200);
    }
}

TEST(DataTask, SendsTheAcceptEncodingOfItsCallerAlone) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    fetch(*makeTransport(),
          {.url = server.url(), .verb = "GET", .headers = {{"accept-encoding", "identity"}}});
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.headerCount("Accept-Encoding"), 1u);
    EXPECT_EQ(request.header("Accept-Encoding"), "identity");
}

}  // namespace
}  // namespace baseapi
