#include "tests/support/scripted_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <signal.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace test_support {
namespace {

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool readMore(Channel& channel, std::string& unread) {
    char bytes[64 * 1024];
    const auto size = channel.read(bytes, sizeof bytes);
    unread.append(bytes, size);
    return size > 0;
}

/// Takes what stands before `end` out of `unread`, and `end` with it.
std::optional<std::string> takeUntil(Channel& channel, std::string& unread, std::string_view end) {
    std::size_t searched = 0;
    for (;;) {
        const auto at = unread.find(end, searched);
        if (at != std::string::npos) {
            auto taken = unread.substr(0, at);
            unread.erase(0, at + end.size());
            return taken;
        }
        searched = unread.size() < end.size() ? 0 : unread.size() - end.size() + 1;
        if (!readMore(channel, unread)) return std::nullopt;
    }
}

std::string takeBytes(Channel& channel, std::string& unread, std::size_t size) {
    while (unread.size() < size && readMore(channel, unread)) {
    }
    if (unread.size() <= size) return std::exchange(unread, {});
    auto taken = unread.substr(0, size);
    unread.erase(0, size);
    return taken;
}

std::string takeChunks(Channel& channel, std::string& unread) {
    std::string body;
    for (;;) {
        const auto line = takeUntil(channel, unread, "\r\n");
        if (!line) return body;
        const auto size = std::stoul(*line, nullptr, 16);
        body += takeBytes(channel, unread, size);
        takeUntil(channel, unread, "\r\n");
        if (size == 0) return body;
    }
}

std::optional<ReceivedRequest> parseHead(std::string_view head) {
    ReceivedRequest request;
    const auto lineEnd = std::min(head.find("\r\n"), head.size());
    const auto line = head.substr(0, lineEnd);
    const auto verbEnd = line.find(' ');
    const auto targetEnd = line.rfind(' ');
    if (verbEnd == std::string_view::npos || targetEnd <= verbEnd) return std::nullopt;
    request.verb = line.substr(0, verbEnd);
    request.target = line.substr(verbEnd + 1, targetEnd - verbEnd - 1);
    request.version = line.substr(targetEnd + 1);

    auto rest = head.substr(std::min(lineEnd + 2, head.size()));
    while (!rest.empty()) {
        const auto end = std::min(rest.find("\r\n"), rest.size());
        const auto colon = rest.find(':');
        if (colon >= end) return std::nullopt;
        auto value = rest.substr(colon + 1, end - colon - 1);
        while (value.starts_with(' ')) value.remove_prefix(1);
        request.headers.emplace_back(rest.substr(0, colon), value);
        rest.remove_prefix(std::min(end + 2, rest.size()));
    }
    return request;
}

std::string takeBody(Channel& channel, std::string& unread, const ReceivedRequest& request) {
    if (request.header("Transfer-Encoding") == "chunked") return takeChunks(channel, unread);
    const auto length = request.header("Content-Length");
    return length ? takeBytes(channel, unread, std::stoul(*length)) : std::string();
}

void blockPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

int listenOnLoopback(int receiveBuffer) {
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (receiveBuffer > 0) {
        ::setsockopt(listener, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener, 512) != 0) {
        throw std::runtime_error("cannot listen on 127.0.0.1");
    }
    return listener;
}

int portOf(int listener) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

}  // namespace

std::optional<std::string> ReceivedRequest::header(std::string_view name) const {
    for (const auto& [key, value] : headers) {
        if (sameName(key, name)) return value;
    }
    return std::nullopt;
}

std::size_t ReceivedRequest::headerCount(std::string_view name) const {
    return static_cast<std::size_t>(std::count_if(
        headers.begin(), headers.end(), [&](const auto& header) { return sameName(header.first, name); }));
}

void Exchange::answer(int status, std::string_view body, const Headers& headers) {
    std::string bytes = "HTTP/1.1 " + std::to_string(status) + " Scripted\r\n";
    for (const auto& [name, value] : headers) bytes += name + ": " + value + "\r\n";
    if (status >= 200 && status != 204 && status != 304) {
        bytes += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    }
    bytes += "\r\n";
    bytes += body;
    send(bytes);
}

void Exchange::send(std::string_view bytes) {
    if (!closed_ && !channel_.write(bytes)) closed_ = true;
}

void Exchange::readBody(std::size_t size) {
    request.body += takeBytes(channel_, unread_, size);
}

void Exchange::close() {
    closed_ = true;
    channel_.close();
}

void Exchange::reset() {
    closed_ = true;
    channel_.reset();
}

void Exchange::hold() {
    std::string ignored;
    while (readMore(channel_, ignored)) ignored.clear();
    close();
}

bool Exchange::waitFor(Event& event) {
    while (!event.wait(std::chrono::milliseconds(50))) {
        if (server_.ending()) return false;
    }
    return true;
}

ScriptedServer::ScriptedServer(Handler handler) : ScriptedServer(std::move(handler), Options{}) {}

ScriptedServer::ScriptedServer(Handler handler, Options options)
    : handler_(std::move(handler)),
      options_(options),
      listener_(listenOnLoopback(options.receiveBuffer)),
      port_(portOf(listener_)) {
    if (options_.tls) certificate_ = std::make_unique<ServerCertificate>();
    acceptor_ = std::thread([this] { acceptAll(); });
}

ScriptedServer::~ScriptedServer() {
    ending_ = true;
    ::shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    ::close(listener_);
    for (auto& connection : connections_) connection.channel.wakeUp();
    for (auto& connection : connections_) connection.thread.join();
}

std::string ScriptedServer::url(std::string_view path) const {
    return (options_.tls ? "https://127.0.0.1:" : "http://127.0.0.1:") + std::to_string(port_) +
           std::string(path);
}

std::vector<ReceivedRequest> ScriptedServer::requests() const {
    std::lock_guard lock(mutex_);
    return requests_;
}

std::size_t ScriptedServer::requestCount() const {
    std::lock_guard lock(mutex_);
    return requests_.size();
}

std::size_t ScriptedServer::connectionCount() const {
    std::lock_guard lock(mutex_);
    return connections_.size();
}

bool ScriptedServer::waitForRequests(std::size_t count, std::chrono::milliseconds patience) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [&] { return requests_.size() >= count; });
}

bool ScriptedServer::waitForEndedConnections(std::size_t count, std::chrono::milliseconds patience) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [&] { return ended_ >= count; });
}

void ScriptedServer::acceptAll() {
    blockPipeSignal();
    for (;;) {
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            if (ending_) return;
            continue;
        }
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        std::lock_guard lock(mutex_);
        auto* context = certificate_ ? certificate_->context() : nullptr;
        auto& connection = connections_.emplace_back(connections_.size() + 1, socket, context);
        connection.thread = std::thread([this, &connection] { serve(connection); });
        changed_.notify_all();
    }
}

void ScriptedServer::serve(Connection& connection) {
    std::string unread;
    while (serveOne(connection, unread)) {
    }
    connection.channel.close();
    std::lock_guard lock(mutex_);
    ++ended_;
    changed_.notify_all();
}

bool ScriptedServer::serveOne(Connection& connection, std::string& unread) {
    const auto head = takeUntil(connection.channel, unread, "\r\n\r\n");
    if (!head) return false;
    auto request = parseHead(*head);
    if (!request) return false;
    if (options_.readBodies) request->body = takeBody(connection.channel, unread, *request);
    request->connection = connection.number;
    record(*request);

    Exchange exchange(*this, connection.channel, unread);
    exchange.request = std::move(*request);
    handler_(exchange);
    return !exchange.closed();
}

void ScriptedServer::record(ReceivedRequest& request) {
    std::lock_guard lock(mutex_);
    request.number = requests_.size() + 1;
    requests_.push_back(request);
    changed_.notify_all();
}

}  // namespace test_support
