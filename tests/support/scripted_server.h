#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/channel.h"
#include "tests/support/event.h"
#include "tests/support/server_certificate.h"

namespace test_support {

using Headers = std::vector<std::pair<std::string, std::string>>;

/// A request as it came over the wire.
struct ReceivedRequest {
    std::string verb;
    std::string target;
    std::string version;
    /// In the order of the wire, spelled as they came.
    Headers headers;
    std::string body;
    /// The number of its connection, counted from 1.
    std::size_t connection = 0;
    /// Its number among all requests of the server, counted from 1.
    std::size_t number = 0;

    /// The value of the first header of this name in any letter case.
    std::optional<std::string> header(std::string_view name) const;
    /// How often a header of this name is there.
    std::size_t headerCount(std::string_view name) const;
};

class ScriptedServer;

/// One request and the ways to answer it. After the handler has returned, the connection waits for its next
/// request, unless it was closed. All calls are harmless when the peer is gone.
class Exchange {
  public:
    Exchange(ScriptedServer& server, Channel& channel, std::string& unread)
        : server_(server), channel_(channel), unread_(unread) {}

    ReceivedRequest request;

    /// A whole answer with its Content-Length.
    void answer(int status, std::string_view body = {}, const Headers& headers = {});
    /// Bytes as they are.
    void send(std::string_view bytes);
    /// Reads up to `size` more bytes of the request's body into `request.body`, where bodies are left to the
    /// handler; fewer only at the end of the stream.
    void readBody(std::size_t size);
    /// Ends the connection in good order.
    void close();
    /// Breaks the connection off.
    void reset();
    /// Waits until the client closes the connection, or the server ends; then closes it.
    void hold();
    /// Waits for the event; false where the server ends first.
    bool waitFor(Event& event);

    bool closed() const { return closed_; }

  private:
    ScriptedServer& server_;
    Channel& channel_;
    std::string& unread_;
    bool closed_ = false;
};

/// An HTTP server on a port of its own at 127.0.0.1 that does what the test tells it, one thread for each
/// connection. It records every request before its handler runs.
class ScriptedServer {
  public:
    using Handler = std::function<void(Exchange&)>;

    struct Options {
        bool tls = false;
        /// Off: the handler reads the body itself with `Exchange::readBody`.
        bool readBodies = true;
        /// How much the kernel takes for a connection before the server reads; 0 leaves that to the kernel.
        int receiveBuffer = 0;
    };

    explicit ScriptedServer(Handler handler);
    ScriptedServer(Handler handler, Options options);
    /// Ends all connections and waits for its threads.
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    int port() const { return port_; }
    /// "http://127.0.0.1:PORT" and the path, https with TLS.
    std::string url(std::string_view path = {}) const;
    /// What a client must trust where the server speaks TLS.
    std::filesystem::path certificateFile() const { return certificate_->pemFile(); }
    /// For what a test wants to set on the server's side of TLS, before the first connection.
    SSL_CTX* tlsContext() const { return certificate_->context(); }

    /// All requests so far, in the order in which they came.
    std::vector<ReceivedRequest> requests() const;
    std::size_t requestCount() const;
    /// The number of connections that were ever accepted.
    std::size_t connectionCount() const;
    /// False where it does not come to that many in time.
    [[nodiscard]] bool waitForRequests(std::size_t count,
                                       std::chrono::milliseconds patience = kPatience) const;
    /// Waits until the server has seen the end of that many connections.
    [[nodiscard]] bool waitForEndedConnections(std::size_t count,
                                               std::chrono::milliseconds patience = kPatience) const;
    bool ending() const { return ending_; }

  private:
    struct Connection {
        Connection(std::size_t connectionNumber, int socket, SSL_CTX* context)
            : number(connectionNumber), channel(socket, context) {}

        std::size_t number;
        Channel channel;
        std::thread thread;
    };

    void acceptAll();
    void serve(Connection& connection);
    bool serveOne(Connection& connection, std::string& unread);
    void record(ReceivedRequest& request);

    const Handler handler_;
    const Options options_;
    std::unique_ptr<ServerCertificate> certificate_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> ending_{false};

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<ReceivedRequest> requests_;
    std::list<Connection> connections_;
    std::size_t ended_ = 0;

    std::thread acceptor_;
};

}  // namespace test_support
