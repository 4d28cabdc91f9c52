#include "bench/sink_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <strings.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace bench {

namespace {

/// Small enough to stay in a core's own cache.
constexpr std::size_t bufferSize = 256 * 1024;

int checked(int result) {
    if (result < 0) throw std::system_error(errno, std::generic_category());
    return result;
}

std::string_view cutLine(std::string_view& text) {
    const auto end = text.find("\r\n");
    const auto line = text.substr(0, end);
    text.remove_prefix(end + 2);
    return line;
}

bool is(std::string_view name, std::string_view expected) {
    return name.size() == expected.size() && strncasecmp(name.data(), expected.data(), name.size()) == 0;
}

struct Head {
    Request request;
    bool awaitsContinue = false;
};

/// Reads a head that ends in an empty line.
Head parseHead(std::string_view text) {
    Head head;
    auto line = cutLine(text);
    head.request.verb = line.substr(0, line.find(' '));
    line.remove_prefix(head.request.verb.size() + 1);
    const auto target = line.substr(0, line.find(' '));
    const auto mark = std::min(target.find('?'), target.size());
    head.request.path = target.substr(0, mark);
    head.request.query = target.substr(std::min(mark + 1, target.size()));

    for (line = cutLine(text); !line.empty(); line = cutLine(text)) {
        const auto name = line.substr(0, line.find(':'));
        auto value = line.substr(std::min(name.size() + 1, line.size()));
        value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
        if (is(name, "content-length")) head.request.bodyLength = std::stoull(std::string(value));
        if (is(name, "host")) head.request.host = value;
        if (is(name, "expect")) head.awaitsContinue = true;
    }
    return head;
}

}  // namespace

struct SinkServer::Connection {
    int descriptor;
    bool watchedForRoom = false;
    /// Received and not yet used.
    std::string input;
    /// The request whose body is on its way.
    std::optional<Request> request;
    std::uint64_t bodyLeft = 0;
    std::string output;
    std::uint64_t fillerLeft = 0;
};

SinkServer::SinkServer()
    : listener_(checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))),
      epoll_(checked(epoll_create1(EPOLL_CLOEXEC))),
      buffer_(bufferSize) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    checked(bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address));
    checked(listen(listener_, SOMAXCONN));
    socklen_t length = sizeof address;
    checked(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length));
    port_ = ntohs(address.sin_port);
    epoll_event event{.events = EPOLLIN, .data = {.ptr = nullptr}};
    checked(epoll_ctl(epoll_, EPOLL_CTL_ADD, listener_, &event));
}

SinkServer::~SinkServer() {
    for (const auto& [descriptor, connection] : connections_) ::close(descriptor);
    ::close(epoll_);
    ::close(listener_);
}

void SinkServer::run() {
    std::array<epoll_event, 128> events;
    while (true) {
        const int count = epoll_wait(epoll_, events.data(), events.size(), -1);
        for (int i = 0; i < count; ++i) {
            auto* connection = static_cast<Connection*>(events[i].data.ptr);
            if (connection == nullptr)
                accept();
            else if ((events[i].events & EPOLLOUT) != 0)
                send(*connection);
            else
                receive(*connection);
        }
    }
}

void SinkServer::accept() {
    const int descriptor = accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (descriptor < 0) return;
    ++accepted_;
    const int on = 1;
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    auto connection = std::make_unique<Connection>(Connection{.descriptor = descriptor});
    epoll_event event{.events = EPOLLIN, .data = {.ptr = connection.get()}};
    checked(epoll_ctl(epoll_, EPOLL_CTL_ADD, descriptor, &event));
    connections_[descriptor] = std::move(connection);
}

void SinkServer::receive(Connection& connection) {
    const auto count = recv(connection.descriptor, buffer_.data(), buffer_.size(), 0);
    if (count < 0 && errno == EAGAIN) return;
    if (count <= 0) return close(connection);

    std::string_view bytes(buffer_.data(), static_cast<std::size_t>(count));
    const bool thrownAway = connection.request && connection.request->verb != "POST";
    if (thrownAway) {
        const auto used = std::min<std::uint64_t>(connection.bodyLeft, bytes.size());
        connection.bodyLeft -= used;
        bytes.remove_prefix(used);
    }
    connection.input.append(bytes);
    takeRequests(connection);
}

void SinkServer::takeRequests(Connection& connection) {
    auto& input = connection.input;
    if (!connection.request) {
        const auto end = input.find("\r\n\r\n");
        if (end == std::string::npos) return;
        auto head = parseHead(std::string_view(input).substr(0, end + 4));
        input.erase(0, end + 4);
        connection.bodyLeft = head.request.bodyLength;
        connection.request = std::move(head.request);
        connection.request->connections = accepted_;
        if (head.awaitsContinue && connection.bodyLeft > input.size())
            connection.output += "HTTP/1.1 100 Continue\r\n\r\n";
    }
    const auto used = std::min<std::uint64_t>(connection.bodyLeft, input.size());
    if (connection.request->verb == "POST") connection.request->body.append(input, 0, used);
    input.erase(0, used);
    connection.bodyLeft -= used;

    if (connection.bodyLeft == 0) answer(connection);
    send(connection);
}

void SinkServer::answer(Connection& connection) {
    const auto request = *std::exchange(connection.request, std::nullopt);
    const auto answer = answers_.answer(request);
    const bool onlyHead = request.verb == "HEAD";
    const auto length = onlyHead ? answer.headLength : answer.body.size() + answer.filler;
    connection.output += "HTTP/1.1 " + std::to_string(answer.status) + " -\r\n" + answer.extraHeaders +
                         "Content-Length: " + std::to_string(length) + "\r\n\r\n";
    if (onlyHead) return;
    connection.output += answer.body;
    connection.fillerLeft = answer.filler;
}

void SinkServer::send(Connection& connection) {
    while (!connection.output.empty() || connection.fillerLeft > 0) {
        const bool filling = connection.output.empty();
        const auto size = filling ? std::min<std::uint64_t>(connection.fillerLeft, buffer_.size())
                                  : connection.output.size();
        const auto* from = filling ? buffer_.data() : connection.output.data();
        const auto count = ::send(connection.descriptor, from, size, MSG_NOSIGNAL);
        if (count < 0 && errno == EAGAIN) return watch(connection, true);
        if (count < 0) return close(connection);
        if (filling)
            connection.fillerLeft -= static_cast<std::uint64_t>(count);
        else
            connection.output.erase(0, static_cast<std::size_t>(count));
    }
    watch(connection, false);
}

void SinkServer::watch(Connection& connection, bool forRoom) {
    if (connection.watchedForRoom == forRoom) return;
    connection.watchedForRoom = forRoom;
    epoll_event event{.events = forRoom ? EPOLLOUT : EPOLLIN, .data = {.ptr = &connection}};
    checked(epoll_ctl(epoll_, EPOLL_CTL_MOD, connection.descriptor, &event));
}

void SinkServer::close(Connection& connection) {
    const int descriptor = connection.descriptor;
    connections_.erase(descriptor);
    ::close(descriptor);
}

}  // namespace bench
