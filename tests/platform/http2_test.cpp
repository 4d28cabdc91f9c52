#include <gtest/gtest.h>

#include <cstring>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

constexpr unsigned char kData = 0, kHeaders = 1, kResetStream = 3, kSettings = 4, kGoAway = 7;
constexpr unsigned char kEndStream = 1, kAcknowledged = 1, kEndHeaders = 4;

std::string frame(unsigned char type, unsigned char flags, std::uint32_t stream, std::string_view payload) {
    std::string bytes;
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(payload.size() >> shift);
    bytes += static_cast<char>(type);
    bytes += static_cast<char>(flags);
    for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(stream >> shift);
    return bytes.append(payload);
}

/// Speaks HTTP/2 inside the connection that a ScriptedServer has taken for HTTP/1.1: the client's preface
/// reads like a request "PRI * HTTP/2.0", whose body are the frames.
class Http2Server {
  public:
    /// Says what to send for a new stream.
    using Answer = std::function<std::string(std::uint32_t stream)>;

    explicit Http2Server(Answer answer)
        : answer_(std::move(answer)),
          server_([this](Exchange& exchange) { serve(exchange); }, {.tls = true, .readBodies = false}) {
        SSL_CTX_set_alpn_select_cb(server_.tlsContext(), &selectHttp2, nullptr);
    }

    std::string url() const { return server_.url("/"); }
    std::filesystem::path certificateFile() const { return server_.certificateFile(); }
    int streams() const { return streams_; }
    std::size_t connections() const { return server_.connectionCount(); }

  private:
    static int selectHttp2(SSL*, const unsigned char** chosen, unsigned char* chosenSize,
                           const unsigned char* offered, unsigned int offeredSize, void*) {
        static const unsigned char wanted[] = "\x02h2";
        unsigned char* found = nullptr;
        const int code = SSL_select_next_proto(&found, chosenSize, wanted, 3, offered, offeredSize);
        *chosen = found;
        return code == OPENSSL_NPN_NEGOTIATED ? SSL_TLSEXT_ERR_OK : SSL_TLSEXT_ERR_ALERT_FATAL;
    }

    std::string take(Exchange& exchange, std::size_t size) {
        exchange.request.body.clear();
        exchange.readBody(size);
        return exchange.request.body;
    }

    void serve(Exchange& exchange) {
        take(exchange, 6);  // the preface's "SM" and its line ends
        exchange.send(frame(kSettings, 0, 0, ""));
        for (;;) {
            const auto head = take(exchange, 9);
            if (head.size() < 9) return exchange.close();
            const auto byte = [&](int at) {
                return static_cast<unsigned char>(head[static_cast<std::size_t>(at)]);
            };
            take(exchange, static_cast<std::size_t>(byte(0) << 16 | byte(1) << 8 | byte(2)));
            const auto stream =
                static_cast<std::uint32_t>(byte(5) << 24 | byte(6) << 16 | byte(7) << 8 | byte(8));
            if (byte(3) == kSettings && !(byte(4) & kAcknowledged))
                exchange.send(frame(kSettings, kAcknowledged, 0, ""));
            if (byte(3) != kHeaders) continue;
            ++streams_;
            exchange.send(answer_(stream));
        }
    }

    const Answer answer_;
    std::atomic<int> streams_{0};
    ScriptedServer server_;
};

/// ":status: 200" is entry 8 of the static table.
std::string okAnswer(std::uint32_t stream, std::string_view body) {
    return frame(kHeaders, kEndHeaders, stream, "\x88") + frame(kData, kEndStream, stream, body);
}

TEST(Http2, IsSpokenWhereTheServerHasIt) {
    Http2Server server([](std::uint32_t stream) { return okAnswer(stream, "two"); });
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    for (int i = 0; i < 3; ++i) {
        const auto answer = get(*transport, server.url());
        ASSERT_FALSE(answer.error) << answer.error->text;
        EXPECT_EQ(answer.status, 200);
        EXPECT_EQ(answer.body, "two");
    }
    EXPECT_EQ(server.streams(), 3);
    EXPECT_EQ(server.connections(), 1u);
}

TEST(Http2, CarriesManyRequestsOnOneConnection) {
    Http2Server server([](std::uint32_t stream) { return okAnswer(stream, "two"); });
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    std::vector<Awaited<DataAnswer>> answers(20);
    for (auto& answer : answers) {
        transport->dataTask({.url = server.url(), .verb = "GET"}, answer.completion())->resume();
    }
    for (auto& answer : answers) EXPECT_FALSE(answer.get().error);
    EXPECT_EQ(server.connections(), 1u);
}

class Http2Refusal : public testing::TestWithParam<bool> {};

TEST_P(Http2Refusal, IsAnErrorAndNoSecondSending) {
    const bool goAway = GetParam();
    Http2Server server([&](std::uint32_t stream) {
        if (stream == 1) return okAnswer(stream, "first");
        using namespace std::string_literals;
        const auto refusedStream = "\0\0\0\7"s;
        const auto lastStreamOneWithoutError = "\0\0\0\1\0\0\0\0"s;
        return goAway ? frame(kGoAway, 0, 0, lastStreamOneWithoutError)
                      : frame(kResetStream, 0, stream, refusedStream);
    });
    const auto transport = makeTransport({.caBundle = server.certificateFile()});
    EXPECT_FALSE(get(*transport, server.url()).error);
    const auto answer = fetch(*transport, {.url = server.url(),
                                           .verb = "POST",
                                           .body = "once",
                                           .idleTimeout = std::chrono::milliseconds(3'000)});
    EXPECT_TRUE(answer.error);
    EXPECT_EQ(server.streams(), 2);
}

INSTANTIATE_TEST_SUITE_P(Http2, Http2Refusal, testing::Bool(), [](const auto& instance) {
    return instance.param ? "OfTheConnection" : "OfTheStream";
});

}  // namespace
}  // namespace baseapi
