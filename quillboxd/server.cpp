#include "quillboxd/server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <thread>

#include "quillboxd/call.h"
#include "quillboxd/error.h"

namespace quillboxd {
namespace {

constexpr int idleSeconds = 120;

UniqueFd listenOn(std::uint16_t port) {
    UniqueFd listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int yes = 1;
    ::setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener.get(), SOMAXCONN) != 0) {
        throw StartError("port " + std::to_string(port) + " cannot be used: " + std::strerror(errno) +
                         "; choose another, or 0 for a free one");
    }
    return listener;
}

std::uint16_t portOf(const UniqueFd& listener) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ::getsockname(listener.get(), reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

void prepareSocket(int socket) {
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    const timeval patience{idleSeconds, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
}

void turnAway(int socket) {
    const auto reply = errorReply(ApiError(503, Code::overloaded, "too many connections at one time"));
    const auto answer = writeHead(reply, false) + reply.body;
    ::send(socket, answer.data(), answer.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

}  // namespace

Server::Server(Service& service, std::uint16_t port, const TlsContext* tls, bool verbose)
    : context_{service, tls, {}, verbose}, listener_(listenOn(port)), port_(portOf(listener_)) {
    context_.address = "127.0.0.1:" + std::to_string(port_);
}

void Server::run(int stop) {
    pollfd events[] = {{listener_.get(), POLLIN, 0}, {stop, POLLIN, 0}};
    while (true) {
        if (::poll(events, 2, -1) < 0 && errno != EINTR) break;
        if (events[1].revents != 0) break;
        if (events[0].revents != 0) accept();
    }
    finish();
}

void Server::accept() {
    UniqueFd socket(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!socket) return;
    prepareSocket(socket.get());
    const int number = socket.get();
    {
        const std::lock_guard lock(mutex_);
        if (open_.size() >= mostConnections) return turnAway(number);
        open_.insert(number);
    }
    try {
        std::thread([this, held = std::move(socket)]() mutable { serve(held); }).detach();
    } catch (const std::system_error&) {
        const std::lock_guard lock(mutex_);
        open_.erase(number);
    }
}

void Server::serve(UniqueFd& socket) {
    const int number = socket.get();
    serveConnection(context_, socket);
    const std::lock_guard lock(mutex_);
    open_.erase(number);
    socket.reset();
    ended_.notify_all();
}

void Server::shutDownAll(int how) {
    for (const int socket : open_) ::shutdown(socket, how);
}

void Server::finish() {
    listener_.reset();
    std::unique_lock lock(mutex_);
    const auto allEnded = [this] { return open_.empty(); };
    shutDownAll(SHUT_RD);
    context_.service.faults.clear();
    if (!ended_.wait_for(lock, std::chrono::seconds(2), allEnded)) shutDownAll(SHUT_RDWR);
    ended_.wait(lock, allEnded);
}

}  // namespace quillboxd
