#include <gtest/gtest.h>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

constexpr ScriptedServer::Options kTls{.tls = true};

TEST(Tls, RefusesACertificateThatNobodyVouchesFor) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); }, kTls);
    const auto answer = get(*makeTransport(), server.url());
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, TransportError::Kind::failed);
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST(Tls, TrustsTheBundleThatWasGiven) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "safe"); }, kTls);
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    for (int i = 0; i < 5; ++i) EXPECT_EQ(get(*transport, server.url()).body, "safe");
    EXPECT_EQ(server.connectionCount(), 1u);
}

TEST(Tls, RefusesACertificateOfAnotherServer) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); }, kTls);
    ScriptedServer other([](Exchange& exchange) { exchange.answer(200); }, kTls);
    EXPECT_TRUE(get(*makeTransport({.caBundle = other.certificateFile()}), server.url()).error);
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST(Tls, RefusesACertificateForAnotherName) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); }, kTls);
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    // The name reaches the same machine, and the certificate does not have it.
    const auto url = "https://ip6-localhost.localhost:" + std::to_string(server.port()) + "/";
    const auto answer = get(*transport, url);
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(server.requestCount(), 0u);
    EXPECT_GE(server.connectionCount(), 1u) << answer.error->text;
}

TEST(Tls, EndsInAnErrorWhereTheBundleIsMissing) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); }, kTls);
    EXPECT_TRUE(get(*makeTransport({.caBundle = "/nonexistent/bundle.pem"}), server.url()).error);
}

TEST(Tls, TakesAnAnswerThatIsCutOffForAnError) {
    ScriptedServer server(
        [](Exchange& exchange) {
            exchange.send("HTTP/1.1 200 OK\r\n\r\nto be contin");
            exchange.reset();
        },
        kTls);
    EXPECT_TRUE(get(*makeTransport({.caBundle = server.certificateFile()}), server.url()).error);
}

TEST(Tls, SendsALargePartByteForByte) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); }, kTls);
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    const std::string body(9'000'001, 't');
    Awaited<std::optional<TransportError>> upload;
    transport->uploadTask({.url = server.url(), .data = bufferOf(body)}, nullptr, upload.completion())
        ->resume();
    EXPECT_FALSE(upload.get());
    EXPECT_TRUE(server.requests().at(0).body == body);
}

}  // namespace
}  // namespace baseapi
