#include "tests/support/scripted_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace test_support;

namespace {

class Client {
  public:
    explicit Client(int port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    }
    ~Client() { ::close(socket_); }

    void send(std::string_view bytes) {
        ASSERT_EQ(::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }
    std::string read(std::size_t size) {
        std::string bytes(size, '\0');
        const auto got = ::recv(socket_, bytes.data(), size, MSG_WAITALL);
        bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        return bytes;
    }
    int readError() {
        char byte;
        return ::recv(socket_, &byte, 1, 0) < 0 ? errno : 0;
    }

  private:
    int socket_;
};

}  // namespace

TEST(ScriptedServer, AnswersRequestsOfOneConnectionInTurn) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, exchange.request.body); });
    Client client(server.port());
    client.send("POST /a?b=1 HTTP/1.1\r\nx-Thing: 7\r\nContent-Length: 3\r\n\r\nonePUT /c HTTP/1.1\r\n");
    const std::string answer = "HTTP/1.1 200 Scripted\r\nContent-Length: 3\r\n\r\none";
    EXPECT_EQ(client.read(answer.size()), answer);
    client.send("Transfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n");
    ASSERT_TRUE(server.waitForRequests(2));
    const auto requests = server.requests();
    EXPECT_EQ(requests[0].verb, "POST");
    EXPECT_EQ(requests[0].target, "/a?b=1");
    EXPECT_EQ(requests[0].header("X-THING"), "7");
    EXPECT_EQ(requests[0].body, "one");
    EXPECT_EQ(requests[1].body, "abc");
    EXPECT_EQ(requests[1].connection, 1u);
    EXPECT_EQ(server.connectionCount(), 1u);
}

TEST(ScriptedServer, ClosesInTheMiddleOfAHead) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 2");
        exchange.close();
    });
    Client client(server.port());
    client.send("GET / HTTP/1.1\r\n\r\n");
    EXPECT_EQ(client.read(100), "HTTP/1.1 2");
    EXPECT_TRUE(server.waitForEndedConnections(1));
}

TEST(ScriptedServer, BreaksAConnectionOff) {
    ScriptedServer server([](Exchange& exchange) { exchange.reset(); });
    Client client(server.port());
    client.send("GET / HTTP/1.1\r\n\r\n");
    EXPECT_EQ(client.readError(), ECONNRESET);
}

TEST(ScriptedServer, HoldsARequestUntilTheServerEnds) {
    auto server = std::make_unique<ScriptedServer>([](Exchange& exchange) { exchange.hold(); });
    Client client(server->port());
    client.send("GET / HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(server->waitForRequests(1));
    server.reset();
    EXPECT_EQ(client.read(1), "");
}
